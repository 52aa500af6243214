#include <iostream>

#include "cli/program.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    return tandril::cli::runProgram(argc, argv, {std::cin, std::cout, std::cerr});
}
