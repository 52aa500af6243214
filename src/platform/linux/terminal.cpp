#include "platform/terminal.h"

#include <unistd.h>

namespace tandril::platform {

bool isErrorTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

}  // namespace tandril::platform
