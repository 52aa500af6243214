#pragma once

namespace CLI {
class App;
}

namespace tandril::cli {

// What takes the arguments of one command apart.
using Parser = CLI::App;

}  // namespace tandril::cli
