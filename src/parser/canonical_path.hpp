// SPDX-License-Identifier: Apache-2.0
// One spelling per file, so that "a.ddl", "./a.ddl" and "A.DDL" are known to be the same file.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include "files/file_names.hpp"

namespace edd {

inline std::string canonical_path(const std::string& path) {
    std::error_code error;
    const std::filesystem::path canonical =
        std::filesystem::weakly_canonical(find_file_name(path).value_or(path), error);
    return error ? path : canonical.string();
}

}  // namespace edd
