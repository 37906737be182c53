// The entry point: the whole program is edd::run.
#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "driver/driver.hpp"

int main(int argc, char** argv) {
    // Beyond a file-size limit a write then fails with EFBIG, and the run reports it,
    // instead of the process being killed with a half-written file.
    std::signal(SIGXFSZ, SIG_IGN);
    std::vector<std::string> arguments(argv, argv + argc);
    const int status = edd::run(arguments, std::cout, std::cerr, edd::Cleanup::leave_to_exit);
    std::cout.flush();
    return status & 0xFF;
}
