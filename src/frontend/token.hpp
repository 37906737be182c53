// The token record: a small value copied freely. The file name is an index into the
// process-wide file-name table, so copying a token never copies a path.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "diagnostics/source_files.hpp"
#include "frontend/token_kind.hpp"

namespace edd {

class Token {
public:
    Token() = default;
    Token(std::uint32_t kind, std::string text) : kind_(kind), text_(std::move(text)) {}
    Token(std::uint32_t kind, std::string text, std::string_view file_name, int line)
        : kind_(kind), text_(std::move(text)), file_(intern_file_name(file_name)), line_(line) {}
    Token(std::uint32_t kind, std::string text, FileIndex file, int line)
        : kind_(kind), text_(std::move(text)), file_(file), line_(line) {}
    // A punctuator by its spelling; throws std::invalid_argument for an unknown one.
    explicit Token(std::string_view punctuator);

    std::uint32_t kind() const { return kind_; }
    const std::string& text() const { return text_; }
    std::string& text() { return text_; }
    const std::string& file_name() const { return file_name_of(file_); }
    FileIndex file() const { return file_; }
    int line() const { return line_; }

    bool is(std::uint32_t kind) const { return kind_ == kind; }
    // Takes the position of another token (expansions report where they were written).
    void set_position(const Token& from) {
        file_ = from.file_;
        line_ = from.line_;
    }

    // Kind and text decide; the position does not.
    friend bool operator==(const Token& a, const Token& b) { return a.kind_ == b.kind_ && a.text_ == b.text_; }

private:
    std::uint32_t kind_ = UNDEFINED;
    std::string text_;
    FileIndex file_ = 0;
    int line_ = 0;
};

// The printed form: kind name (or number), "(", text, ")".
std::string to_string(const Token& token);

}  // namespace edd
