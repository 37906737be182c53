// SPDX-License-Identifier: Apache-2.0
// The token record: a small value copied freely, as plain as an int. Its text is a view
// into the texts of the run (the source files the lexers read, and the texts the lexers and
// the preprocessor made), which stay until the lexer or preprocessor that delivered the token
// goes; its file name is an index into the process-wide file-name table. Its word is the
// number of its text among the words the grammars test for (frontend/word.hpp), set where
// the token is made.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "diagnostics/source_files.hpp"
#include "frontend/token_kind.hpp"
#include "frontend/word.hpp"

namespace edd {

class Token {
public:
    Token() = default;
    Token(std::uint32_t kind, std::string_view text, FileIndex file = 0, int line = 0, Word word = {})
        : kind_(kind), file_(file), line_(line), word_(word), text_(text) {}

    std::uint32_t kind() const { return kind_; }
    std::string_view text() const { return text_; }
    // The same token as another kind (the preprocessor's markers).
    void set_kind(std::uint32_t kind) { kind_ = kind; }
    const std::string& file_name() const { return file_name_of(file_); }
    FileIndex file() const { return file_; }
    int line() const { return line_; }
    Word word() const { return word_; }

    bool is(std::uint32_t kind) const { return kind_ == kind; }

private:
    std::uint32_t kind_ = UNDEFINED;
    FileIndex file_ = 0;
    int line_ = 0;
    Word word_;  // in what was padding
    std::string_view text_;
};

static_assert(sizeof(Token) == 32, "a token is copied at every step: keep it small");

// The printed form: kind name (or number), "(", text, ")".
std::string to_string(const Token& token);

}  // namespace edd
