// SPDX-License-Identifier: Apache-2.0
// The process-wide table of source file names. Tokens and positions store an index into it,
// so a file name is held once however many tokens come from that file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace edd {

using FileIndex = std::uint32_t;

// Index of `name`, appended when it is new. Index 0 is the empty name.
FileIndex intern_file_name(std::string_view name);

// The name behind an index handed out by intern_file_name.
const std::string& file_name_of(FileIndex index);

}  // namespace edd
