#pragma once

namespace CLI {  // NOLINT(readability-identifier-naming): the library's name
class App;
}

namespace tandril::cli {

// What takes the arguments of one command apart.
using Parser = CLI::App;

}  // namespace tandril::cli
