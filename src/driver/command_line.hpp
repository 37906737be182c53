// SPDX-License-Identifier: Apache-2.0
// Scanning the command line. Messages of this phase go to standard error: the diagnostics
// file is opened only after the scan.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostics.hpp"
#include "driver/options.hpp"

namespace edd {

// The first argument without everything up to its last "\" or "/".
std::string program_name_of(std::string_view first_argument);

// The usage line and the option list.
void print_help(std::ostream& out, std::string_view program_name);

// Fills `options` from the arguments after the program name. Returns the exit status when
// the process must end (help printed on `out`, or a command-line error reported).
std::optional<int> scan_arguments(const std::vector<std::string>& arguments, Options& options, std::ostream& out,
                                  Diagnostics& diagnostics);

}  // namespace edd
