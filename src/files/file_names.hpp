// SPDX-License-Identifier: Apache-2.0
// File names as the descriptions' authors wrote them, on Windows: `\` separates directories
// and letters match whatever their case. Here a name is taken as written when it exists;
// only otherwise is it looked up the Windows way, so that a name that works today never
// changes meaning.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace edd {

// The name under which `name` exists on disk: `name` itself when it does; else `name` with
// `\` read as `/` and each component that does not exist replaced by the first entry of its
// directory, in ascending byte order, that equals it but for the case of ASCII letters.
// Nothing when some component has no such entry.
std::optional<std::string> find_file_name(std::string_view name);

// Everything before the last separator (`/` or `\`), or "." for a bare file name: the
// directory a source's own includes are searched in.
std::string directory_part(const std::string& name);

// ASCII letters compared without regard to case; every other byte as it is.
bool equal_ignoring_case(std::string_view a, std::string_view b);

}  // namespace edd
