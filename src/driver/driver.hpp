// The fixed pipeline from the command line to the output file, and the exit statuses.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace edd {

// Runs one conversion. `arguments` is the whole command line, program name first. Returns
// the exit status (negative statuses as the converter defines them).
int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace edd
