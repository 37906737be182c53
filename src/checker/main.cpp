// SPDX-License-Identifier: Apache-2.0
// The entry point of tarnwick-check: the whole program is edd::run_checker.
#include <iostream>
#include <string>
#include <vector>

#include "checker/checker.hpp"
#include "files/platform.hpp"
#include "files/temporary_files.hpp"

int main(int argc, char** argv) {
    // Binary standard streams and the UTF-8 console, as for the converter.
    edd::platform::prepare_process(edd::temporary_files::clean_up);
    const std::vector<std::string> arguments(argv, argv + argc);
    const int status = edd::run_checker(arguments, std::cout, std::cerr);
    std::cout.flush();
    return edd::platform::exit_status(status);
}
