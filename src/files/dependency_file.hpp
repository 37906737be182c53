// SPDX-License-Identifier: Apache-2.0
// The dependency file a build tool reads to learn what a document was made from (make,
// ninja and CMake read the format of compilers' -MD -MP output).
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace edd {

// "target: prerequisite ..." and then an empty rule for each prerequisite, so that a
// prerequisite deleted later does not stop the build. Names are escaped for make; "./" and
// doubled slashes are dropped from them.
std::string make_dependency_rules(std::string_view target, const std::vector<std::string>& prerequisites);

// The first of the names that make would misread however it is escaped: one holding a line
// end, or a ':' (which make takes for the end of a target) other than a Windows drive's.
// Nothing when every name can be written.
std::optional<std::string> unwritable_dependency_name(std::string_view target,
                                                      const std::vector<std::string>& prerequisites);

}  // namespace edd
