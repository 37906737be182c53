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

}  // namespace

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
