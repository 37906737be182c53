// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/source_files.hpp"

#include <deque>
#include <unordered_map>

namespace edd {

namespace {

struct FileNameTable {
    std::deque<std::string> names{std::string()};  // a deque: entries never move
    std::unordered_map<std::string_view, FileIndex> index{{names.front(), 0}};
};

FileNameTable& table() {
    static FileNameTable instance;
    return instance;
}

}  // namespace

FileIndex intern_file_name(std::string_view name) {
    FileNameTable& t = table();
    if (auto it = t.index.find(name); it != t.index.end()) return it->second;
    const auto id = static_cast<FileIndex>(t.names.size());
    t.names.emplace_back(name);
    t.index.emplace(t.names.back(), id);
    return id;
}

const std::string& file_name_of(FileIndex index) { return table().names.at(index); }

}  // namespace edd
