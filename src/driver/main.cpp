// SPDX-License-Identifier: Apache-2.0
// The entry point: the whole program is edd::run.
#include <iostream>
#include <string>
#include <vector>

#include "driver/driver.hpp"
#include "files/platform.hpp"
#include "files/temporary_files.hpp"

int main(int argc, char** argv) {
    edd::platform::prepare_process(edd::temporary_files::clean_up);
    std::vector<std::string> arguments(argv, argv + argc);
    const int status = edd::run(arguments, std::cout, std::cerr, edd::Cleanup::leave_to_exit);
    std::cout.flush();
    return edd::platform::exit_status(status);
}
