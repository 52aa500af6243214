#include "cli/methods_command.h"

#include <ostream>

#include "component/methods.h"

namespace tandril::cli {

int MethodsCommand::run(const Streams& streams) {
    for (const Method& method : methods()) {
        streams.out << signature(method) << '\n';
    }
    return exitSuccess;
}

}  // namespace tandril::cli
