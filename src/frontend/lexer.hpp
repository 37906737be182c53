// SPDX-License-Identifier: Apache-2.0
// The lexer: the bytes of one source file to tokens, blanks, line ends and comments
// included (the preprocessor needs them). It never throws for bad input: it reports and
// produces ERROR or UNDEFINED tokens, and the reader of the tokens decides.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "diagnostics/diagnostics.hpp"
#include "files/source_text.hpp"
#include "frontend/char_class.hpp"
#include "frontend/text_store.hpp"
#include "frontend/token_stream.hpp"

namespace edd {

class Lexer final : public TokenStream {
public:
    // A source read whole beforehand; `file_name` is stamped on its tokens and messages.
    struct FromText {};
    Lexer(FromText, SourceText text, std::string_view file_name, Diagnostics& diagnostics);
    // A source shared with others (a file included many times is read once), its made
    // texts kept in `made_texts` (the including preprocessor's).
    Lexer(FromText, std::shared_ptr<const SourceText> text, std::string_view file_name, Diagnostics& diagnostics,
          std::shared_ptr<TextStore> made_texts);
    static Lexer from_text(std::string text, std::string_view file_name, Diagnostics& diagnostics);

    Token next_token() override {
        Token token;
        read(token);
        return token;
    }
    // The same, written into `token`: a token built in place and read field by field is
    // never copied whole right after its fields were stored, which stalls the processor.
    void read(Token& token);
    void read_significant(Token& token) override {
        read(token);
        while (token.is(WHITESPACE) || token.is(NEWLINE) || token.is(COMMENT)) read(token);
    }
    // The next token that is no blank, line end or comment, written into `token`. Returns
    // how many tokens that was as the preprocessor counts them: the token, and a run of
    // blanks one per character. Between two tokens there mostly are only blanks and line
    // ends, which this reads without making tokens of them.
    std::size_t read_past_blanks(Token& token);
    // Off: every blank character is a WHITESPACE token of its own. On: a run of blanks is
    // one token (the preprocessor reads its lexers so).
    void set_blank_runs(bool on) { blank_runs_ = on; }
    int current_line() const override { return line_; }
    // The byte the next token starts with, or -1 where one byte does not tell the token: at
    // the end of the text and at a backslash, which may join lines.
    int next_start() const {
        return cursor_ == end_ || *cursor_ == '\\' ? -1 : static_cast<unsigned char>(*cursor_);
    }
    const std::string& file_name() const { return file_name_of(file_); }

private:
    void start();
    void lex_next(Token& token);
    // The byte `ahead` places after the cursor, or -1 past the end.
    int peek(std::size_t ahead = 0) const {
        return static_cast<std::size_t>(end_ - cursor_) > ahead ? static_cast<unsigned char>(cursor_[ahead]) : -1;
    }
    // The token whose text runs from `start` to the cursor: a view into the source.
    void make(Token& token, std::uint32_t kind, const char* start, Word word = {}) const {
        token = Token(kind, std::string_view(start, static_cast<std::size_t>(cursor_ - start)), file_, line_, word);
    }
    static void set(Token& token, std::uint32_t kind, std::string_view text, FileIndex file, int line) {
        token = Token(kind, text, file, line);
    }

    void lex_operator(Token& token, const char* start);
    void lex_block_comment(Token& token, const char* start);
    void lex_line_comment(Token& token, const char* start);
    void lex_string(Token& token, const char* start);
    const char* closing_quote(const char* from) const;
    // The first byte from `from` on that is not in class `cls`. The scan runs on a local
    // pointer: a loop that moved cursor_ itself would store it at every byte.
    static const char* skip(const char* from, std::uint8_t cls) {
        while (chars::is_byte(*from, cls)) ++from;
        return from;
    }
    // The first `c` in [from, to), or `to`.
    static const char* find(const char* from, const char* to, char c) {
        const void* found = std::memchr(from, c, static_cast<std::size_t>(to - from));
        return found == nullptr ? to : static_cast<const char*>(found);
    }
    void lex_number(Token& token, const char* start);
    void lex_float(Token& token, const char* start, bool has_integer_part);
    void lex_word(Token& token, const char* start);
    void take_integer_suffix();
    void skip_after_backslash();

    // The byte at end_ is the text's terminating NUL or a 0xFF, both outside every
    // character class, so scanning loops that stop at a byte outside their class need no
    // bounds test; a NUL inside the text is told apart from the end by its position.
    std::shared_ptr<const SourceText> source_;
    std::shared_ptr<TextStore> made_texts_;
    const char* cursor_ = nullptr;  // the next byte to read
    const char* end_ = nullptr;
    FileIndex file_ = 0;
    int line_ = 1;
    bool blank_runs_ = false;
    Diagnostics& diagnostics_;
};

}  // namespace edd
