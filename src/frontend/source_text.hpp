// Reading a source file whole into memory.
#pragma once

#include <istream>
#include <optional>
#include <string>

namespace edd {

// The bytes of a regular file; nothing when it cannot be opened or read (a directory, say).
std::optional<std::string> read_file(const std::string& path);

// The rest of a stream.
std::string read_stream(std::istream& in);

}  // namespace edd
