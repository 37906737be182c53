// SPDX-License-Identifier: Apache-2.0
// The files #include reads: looked for along the include paths in order (never beside the
// including file), each read once however often it is included (its tokens may be held to
// the end of the run), and the files of an include chain that ran past the nesting limit,
// which fail at once when included again instead of running down the whole chain anew.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "files/input_files.hpp"

namespace edd {

class IncludeFiles {
public:
    IncludeFiles(std::vector<std::string> paths, InputFiles& files) : paths_(std::move(paths)), files_(files) {}

    struct Found {
        std::string path;  // the include path, "/" and the name
        std::shared_ptr<const SourceText> text;  // null when no path has the file
        bool runaway = false;  // the first candidate on the way was part of a runaway chain
    };
    // Throws FileTooLarge for a file beyond the reading bound.
    Found find(std::string_view name);
    void mark_runaway(const std::vector<std::string>& names) { runaway_.insert(names.begin(), names.end()); }
    // Each include path on a line of its own, for the message of a file not found.
    std::string path_lines() const;

private:
    std::vector<std::string> paths_;
    InputFiles& files_;
    std::unordered_map<std::string, std::shared_ptr<const SourceText>> texts_;
    std::unordered_set<std::string> runaway_;
};

}  // namespace edd
