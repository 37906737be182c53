// The entry point: the whole program is edd::run.
#include <iostream>
#include <string>
#include <vector>

#include "driver/driver.hpp"

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv, argv + argc);
    const int status = edd::run(arguments, std::cout, std::cerr, edd::Cleanup::leave_to_exit);
    std::cout.flush();
    return status & 0xFF;
}
