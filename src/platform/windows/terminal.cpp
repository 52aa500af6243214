#include "platform/terminal.h"

#include <io.h>

#include <cstdio>

namespace tandril::platform {

bool isErrorTerminal() {
    return ::_isatty(::_fileno(stderr)) != 0;
}

}  // namespace tandril::platform
