// The entry point of tarnwick-check: the whole program is edd::run_checker.
#include <iostream>
#include <string>
#include <vector>

#include "checker/checker.hpp"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    const int status = edd::run_checker(arguments, std::cout, std::cerr);
    std::cout.flush();
    return status;
}
