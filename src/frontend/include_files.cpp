// SPDX-License-Identifier: Apache-2.0
#include "frontend/include_files.hpp"

#include <utility>

namespace edd {

IncludeFiles::Found IncludeFiles::find(std::string_view name) {
    Found found;
    for (const std::string& path : paths_) {
        found.path = path + "/";
        found.path += name;
        if (runaway_.contains(found.path)) {
            found.runaway = true;
            return found;
        }
        if (auto known = texts_.find(found.path); known != texts_.end()) {
            found.text = known->second;
            return found;
        }
        if (auto text = files_.read_source(found.path)) {
            found.text = std::make_shared<const SourceText>(std::move(*text));
            texts_.emplace(found.path, found.text);
            return found;
        }
    }
    return found;
}

std::string IncludeFiles::path_lines() const {
    std::string lines;
    for (const std::string& path : paths_) {
        lines += path;
        lines += '\n';
    }
    return lines;
}

}  // namespace edd
