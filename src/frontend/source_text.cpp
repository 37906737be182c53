#include "frontend/source_text.hpp"

#include <cstdio>
#include <filesystem>
#include <system_error>
#include <iterator>
#include <memory>

namespace edd {

std::optional<std::string> read_file(const std::string& path) {
    std::unique_ptr<std::FILE, decltype(&std::fclose)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) return std::nullopt;
    // Sized from the file when it tells its size, so that the text is read in place and
    // takes no more room than it needs; read to the end all the same, in case it grew.
    std::string text;
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error)) {
        const auto size = std::filesystem::file_size(path, error);
        if (!error) text.resize(static_cast<std::size_t>(size));
    }
    std::size_t length = std::fread(text.data(), 1, text.size(), file.get());
    for (char buffer[65536];;) {
        const std::size_t n = std::fread(buffer, 1, sizeof buffer, file.get());
        if (n == 0) break;
        text.resize(length);
        text.append(buffer, n);
        length = text.size();
    }
    text.resize(length);
    // Reading a directory "opens" but fails on the first read.
    if (std::ferror(file.get())) return std::nullopt;
    return text;
}

std::string read_stream(std::istream& in) {
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace edd
