// SPDX-License-Identifier: Apache-2.0
#include "files/dependency_file.hpp"

namespace edd {

namespace {

// The name without "." components and empty ones: ".//img/a.png" is "img/a.png", the
// spelling a build file would use. ".." stays, as it may lead through a symbolic link.
std::string tidy(std::string_view name) {
    std::string out = name.starts_with('/') ? "/" : "";
    while (!name.empty()) {
        const std::size_t end = name.find('/');
        const std::string_view component = name.substr(0, end);
        name = end == std::string_view::npos ? std::string_view() : name.substr(end + 1);
        if (component.empty() || component == ".") continue;
        if (!out.empty() && out.back() != '/') out += '/';
        out += component;
    }
    return out.empty() ? "." : out;
}

// As compilers escape names for make: a blank after 2N backslashes would end the name,
// so they become 2N+1 and a blank; "#" would start a comment, "$" a variable.
void append_escaped(std::string& out, std::string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        if (c == ' ' || c == '\t') {
            for (std::size_t j = i; j > 0 && name[j - 1] == '\\'; --j) out += '\\';
            out += '\\';
        } else if (c == '#') {
            out += '\\';
        } else if (c == '$') {
            out += '$';
        }
        out += c;
    }
}

// "C:/lib" and "C:\\lib" are names make reads on Windows, where files are named so.
#ifdef _WIN32
constexpr bool drive_letters = true;
#else
constexpr bool drive_letters = false;
#endif

bool writable(std::string_view name) {
    if (name.find_first_of("\r\n") != std::string_view::npos) return false;
    const bool drive = drive_letters && name.size() > 2 && name[1] == ':' && (name[2] == '/' || name[2] == '\\') &&
                       ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= 'a' && name[0] <= 'z'));
    return name.find(':', drive ? 2 : 0) == std::string_view::npos;
}

}  // namespace

std::optional<std::string> unwritable_dependency_name(std::string_view target,
                                                      const std::vector<std::string>& prerequisites) {
    if (!writable(target)) return std::string(target);
    for (const std::string& name : prerequisites)
        if (!writable(name)) return name;
    return std::nullopt;
}

std::string make_dependency_rules(std::string_view target, const std::vector<std::string>& prerequisites) {
    std::string out;
    append_escaped(out, tidy(target));
    out += ':';
    for (const std::string& name : prerequisites) {
        out += ' ';
        append_escaped(out, tidy(name));
    }
    out += '\n';
    for (const std::string& name : prerequisites) {
        append_escaped(out, tidy(name));
        out += ":\n";
    }
    return out;
}

}  // namespace edd
