// SPDX-License-Identifier: Apache-2.0
// tarnwick-check: parses a description as the converter does and reports what the
// conversion passes over in silence. The command line, the pipeline and the exit statuses.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace edd {

namespace checker_status {
inline constexpr int clean = 0;
inline constexpr int found = 1;
inline constexpr int not_checked = 2;  // unreadable or unparsable description, bad command line
}  // namespace checker_status

// `arguments` is the whole command line, program name first. Findings and the summary go
// to `out`; the parser's diagnostics and the command line's errors to `err`.
int run_checker(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace edd
