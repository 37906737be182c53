// The lexer: the bytes of one source file to tokens, blanks, line ends and comments
// included (the preprocessor needs them). It never throws for bad input: it reports and
// produces ERROR or UNDEFINED tokens, and the reader of the tokens decides.
#pragma once

#include <cstddef>
#include <iostream>
#include <string>
#include <string_view>

#include "frontend/token_stream.hpp"

namespace edd {

class Lexer : public TokenStream {
public:
    // Opens and reads the named file; a file that cannot be read lexes as empty.
    Lexer(const std::string& file_name, std::ostream& diagnostics);
    Lexer(std::istream& input, std::string_view file_name, std::ostream& diagnostics);
    Lexer(std::istream& input, std::string_view file_name);

    // An in-memory source (an included file already read, tests, tools).
    struct FromText {};
    Lexer(FromText, std::string text, std::string_view file_name, std::ostream& diagnostics);
    static Lexer from_text(std::string text, std::string_view file_name, std::ostream& diagnostics);

    Token next_token() override;
    int current_line() const override { return line_; }
    const std::string& file_name() const { return file_name_of(file_); }

private:
    void start();
    int read();
    void advance();
    // The character after the look-ahead one.
    int peek_after_next() const;

    Token make(std::uint32_t kind, std::string text) const { return Token(kind, std::move(text), file_, line_); }
    Token make_char(std::uint32_t kind) const { return make(kind, std::string(1, static_cast<char>(current_))); }

    Token lex_operator();
    Token lex_block_comment();
    Token lex_line_comment();
    Token lex_string();
    Token lex_number();
    Token lex_float(std::string integer_part);
    Token lex_word();
    void take_integer_suffix(std::string& text);
    void skip_after_backslash();

    std::string source_;
    std::size_t position_ = 0;
    FileIndex file_ = 0;
    int line_ = 1;
    std::ostream& diagnostics_;
    int current_ = 0;  // 0 before the first character, -1 at the end
    int next_ = 0;
};

}  // namespace edd
