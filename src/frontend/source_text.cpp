#include "frontend/source_text.hpp"

#include <cstdio>
#include <iterator>
#include <memory>

namespace edd {

std::optional<std::string> read_file(const std::string& path) {
    std::unique_ptr<std::FILE, decltype(&std::fclose)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) return std::nullopt;
    std::string text;
    char buffer[65536];
    for (;;) {
        const std::size_t n = std::fread(buffer, 1, sizeof buffer, file.get());
        text.append(buffer, n);
        if (n < sizeof buffer) break;
    }
    // Reading a directory "opens" but fails on the first read.
    if (std::ferror(file.get())) return std::nullopt;
    return text;
}

std::string read_stream(std::istream& in) {
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace edd
