// One spelling per file, so that "a.ddl" and "./a.ddl" are known to be the same file.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace edd {

inline std::string canonical_path(const std::string& path) {
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(path, error);
    return error ? path : canonical.string();
}

}  // namespace edd
