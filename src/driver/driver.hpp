// SPDX-License-Identifier: Apache-2.0
// The fixed pipeline from the command line to the output file, and the exit statuses.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace edd {

// What becomes of the description and the document when a run ends. A process that exits
// right after the run can leave them to the end of the process: freeing them piece by
// piece takes a fifth of a large conversion. They stay reachable, so leak checkers are quiet.
enum class Cleanup { free_memory, leave_to_exit };

// Runs one conversion. `arguments` is the whole command line, program name first. Returns
// the exit status (negative statuses as the converter defines them).
int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
        Cleanup cleanup = Cleanup::free_memory);

}  // namespace edd
