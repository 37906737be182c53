// SPDX-License-Identifier: Apache-2.0
#include "files/file_names.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace edd {

namespace {

bool exists(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// The smallest entry of `directory` that matches `component`; a listing comes in no
// defined order, and the smallest name is the same answer on every system.
std::optional<std::string> match_entry(const std::string& directory, std::string_view component) {
    std::error_code error;
    std::filesystem::directory_iterator it(directory.empty() ? std::string(".") : directory, error);
    std::optional<std::string> best;
    for (const std::filesystem::directory_iterator end; !error && it != end; it.increment(error)) {
        std::string entry = it->path().filename().string();
        if (equal_ignoring_case(entry, component) && (!best || entry < *best)) best = std::move(entry);
    }
    return best;
}

}  // namespace

bool equal_ignoring_case(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) { return lower(x) == lower(y); });
}

std::optional<std::string> find_file_name(std::string_view name) {
    std::string path(name);
    if (path.empty()) return std::nullopt;
    if (exists(path)) return path;
    std::ranges::replace(path, '\\', '/');
    // `found` is the part resolved so far, ending in '/' unless it is empty.
    std::string found = path.front() == '/' ? "/" : "";
    std::size_t start = 0;
    while (start < path.size()) {
        std::size_t end = path.find('/', start);
        if (end == std::string::npos) end = path.size();
        const std::string_view component = std::string_view(path).substr(start, end - start);
        start = end + 1;
        if (component.empty()) continue;
        std::string next = found + std::string(component);
        if (!exists(next)) {
            std::optional<std::string> entry = match_entry(found, component);
            if (!entry) return std::nullopt;
            next = found + *entry;
        }
        found = std::move(next);
        if (start < path.size()) found += '/';
    }
    return found;
}

std::string directory_part(const std::string& name) {
    const auto separator = name.find_last_of("\\/");
    return separator == std::string::npos ? std::string(".") : name.substr(0, separator);
}

}  // namespace edd
