// SPDX-License-Identifier: Apache-2.0
// What the command line asks for.
#pragma once

#include <string>
#include <vector>

namespace edd {

struct Options {
    std::string program_name;
    std::string input_file;
    std::string output_file;       // filled in from the input name when -o is absent
    std::string diagnostics_file;  // empty: diagnostics go to standard error
    std::vector<std::string> include_paths;
    std::vector<std::string> dictionary_files;
    std::string profile = "PROFIBUS";
    bool continue_on_error = false;
    bool dump = false;
    std::string dump_file = "out.txt";
    // From the environment, not the command line: TARNWICK_DEPFILE. Empty: none is written.
    std::string dependency_file;
};

}  // namespace edd
