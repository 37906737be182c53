// SPDX-License-Identifier: Apache-2.0
#include "frontend/lexer.hpp"

#include <algorithm>
#include <array>

#include "diagnostics/messages.hpp"
#include "frontend/char_class.hpp"
#include "frontend/keywords.hpp"
#include "frontend/punctuators.hpp"

namespace edd {

Lexer::Lexer(FromText, SourceText text, std::string_view file_name, Diagnostics& diagnostics)
    : Lexer(FromText{}, std::make_shared<const SourceText>(std::move(text)), file_name, diagnostics,
            std::make_shared<TextStore>()) {}

Lexer::Lexer(FromText, std::shared_ptr<const SourceText> text, std::string_view file_name, Diagnostics& diagnostics,
             std::shared_ptr<TextStore> made_texts)
    : source_(std::move(text)),
      made_texts_(std::move(made_texts)),
      file_(intern_file_name(file_name)),
      diagnostics_(diagnostics) {
    start();
}

Lexer Lexer::from_text(std::string text, std::string_view file_name, Diagnostics& diagnostics) {
    return Lexer(FromText{}, std::move(text), file_name, diagnostics);
}

// The first read drops a leading byte-order mark; each of its three bytes is tested on its
// own, so any of them, in order, is dropped at the start.
void Lexer::start() {
    // A byte 0xFF reads as the end-of-input value, so the text ends before the first one.
    const std::string_view text = source_->view();
    cursor_ = text.data();
    end_ = cursor_ + std::min(text.find('\xFF'), text.size());
    for (const int mark_byte : {0xEF, 0xBB, 0xBF})
        if (peek() == mark_byte) ++cursor_;
}

namespace {

// What a token starting with a byte is: the lexer's first decision, one table lookup and a
// dense switch (the cases as byte ranges cost a chain of tests per token).
enum class Start : std::uint8_t { OTHER, BLANK, LINE_FEED, SINGLE, OPERATOR, QUOTE, BACKSLASH, DIGIT, WORD };

constexpr auto starts = [] {
    std::array<Start, 256> table{};
    for (const char c : std::string_view("\t\v\r ")) table[static_cast<unsigned char>(c)] = Start::BLANK;
    table['\n'] = Start::LINE_FEED;
    for (const char c : std::string_view("(),:;?[]{}")) table[static_cast<unsigned char>(c)] = Start::SINGLE;
    for (const char c : std::string_view("!#%&*+-./<=>^|~")) table[static_cast<unsigned char>(c)] = Start::OPERATOR;
    table['"'] = Start::QUOTE;
    table['\\'] = Start::BACKSLASH;
    for (std::size_t c = 0; c < table.size(); ++c) {
        if (chars::is(static_cast<int>(c), chars::IDENT_START)) table[c] = Start::WORD;
        if (chars::is(static_cast<int>(c), chars::DIGIT)) table[c] = Start::DIGIT;
    }
    return table;
}();

}  // namespace

// Inlined too: the most common token, and the keyword lookup in it is inline for this.
[[gnu::always_inline]] inline void Lexer::lex_word(Token& token, const char* start) {
    cursor_ = skip(cursor_, chars::IDENT_PART);
    const std::string_view text(start, cursor_);
    const WordClass word = end_ - start >= 16 ? classify_word_with_room(text) : classify_word(text);
    return make(token, word.kind, start, word.word);
}

// Inlined into both readers: a call per token is a good part of what a token costs.
[[gnu::always_inline]] inline void Lexer::lex_next(Token& token) {
    for (;;) {
        if (cursor_ == end_) return make(token, END_OF_FILE, cursor_);
        const char* start = cursor_++;
        const Start kind = starts[static_cast<unsigned char>(*start)];
        // Most tokens are words: a test that mostly goes one way costs less than the table
        // jump, whose target changes from token to token.
        if (kind == Start::WORD) return lex_word(token, start);
        switch (kind) {
        case Start::WORD: return lex_word(token, start);
        case Start::SINGLE:
            return make(token, static_cast<unsigned char>(*start), start, Word::numbered(static_cast<unsigned char>(*start)));
        case Start::OPERATOR: return lex_operator(token, start);
        case Start::QUOTE: return lex_string(token, start);
        case Start::DIGIT: return lex_number(token, start);
        case Start::BLANK:
            if (blank_runs_)
                cursor_ = skip(cursor_, chars::BLANK);
            return make(token, WHITESPACE, start);
        case Start::LINE_FEED:
            make(token, NEWLINE, start);
            ++line_;
            return;
        case Start::BACKSLASH:
            if (*cursor_ == '\r' || *cursor_ == '\n') {
                ++line_;
                if (*cursor_++ == '\r' && *cursor_ == '\n') ++cursor_;
            } else {
                diagnostics_.lexer_error(file_name(), line_, messages::trailing_backslash);
                skip_after_backslash();
            }
            continue;
        case Start::OTHER: return make(token, UNDEFINED, start);
        }
    }
}

void Lexer::read(Token& token) { lex_next(token); }

std::size_t Lexer::read_past_blanks(Token& token) {
    std::size_t passed = 1;  // the token itself
    for (;;) {
        // The byte at end_ is neither a blank nor a line feed, so this stops there too.
        for (const char* at = cursor_;; ++at) {
            at = skip(at, chars::BLANK);
            if (*at != '\n') {
                passed += static_cast<std::size_t>(at - cursor_);
                cursor_ = at;
                break;
            }
            ++line_;
        }
        lex_next(token);
        if (!token.is(WHITESPACE) && !token.is(NEWLINE) && !token.is(COMMENT)) return passed;
        passed += token.is(WHITESPACE) ? std::max<std::size_t>(token.text().size(), 1) : 1;
    }
}

// Everything up to and including the next line feed is dropped, and every dropped character
// counts as a line: later positions in the file shift by the length of the dropped text.
void Lexer::skip_after_backslash() {
    const char* line_feed = find(cursor_, end_, '\n');
    const char* stop = line_feed == end_ ? end_ : line_feed + 1;
    line_ += static_cast<int>(stop - cursor_);
    cursor_ = stop;
}

void Lexer::lex_operator(Token& token, const char* start) {
    if (*start == '.' && chars::is_byte(*cursor_, chars::DIGIT)) return lex_float(token, start, false);
    if (*start == '/' && *cursor_ == '*') return lex_block_comment(token, start);
    if (*start == '/' && *cursor_ == '/') return lex_line_comment(token, start);
    if (*start == '#' && *cursor_ == '#') {
        ++cursor_;
        return make(token, PREPROCESSOR_PASTE, start);
    }
    // Most operators stand alone: every punctuator of two or three bytes goes on with one of
    // these bytes, and every operator byte alone is the kind of that byte.
    switch (*cursor_) {
    case '<': case '>': case '=': case '&': case '|': case '+': case '-': break;
    default:
        return make(token, static_cast<unsigned char>(*start), start, Word::numbered(static_cast<unsigned char>(*start)));
    }
    // Longest match; every operator character is a punctuator on its own.
    const std::size_t available = static_cast<std::size_t>(end_ - start);
    const auto punctuator = *match_punctuator(std::string_view(start, std::min<std::size_t>(available, 3)));
    cursor_ = start + punctuator.spelling.size();
    return make(token, punctuator.kind, start, Word::numbered(static_cast<std::uint16_t>(punctuator.kind)));
}

void Lexer::lex_block_comment(Token& token, const char* start) {
    const int start_line = line_;
    ++cursor_;  // the '*' of the opener cannot also close the comment
    while (cursor_ != end_) {
        const char c = *cursor_++;
        if (c == '\n') {
            ++line_;
        } else if (c == '*' && *cursor_ == '/') {
            ++cursor_;
            break;
        }
    }
    return set(token, COMMENT, std::string_view(start, static_cast<std::size_t>(cursor_ - start)), file_, start_line);
}

void Lexer::lex_line_comment(Token& token, const char* start) {
    cursor_ = find(cursor_, end_, '\n');
    return make(token, COMMENT, start);
}

// No escape is decoded: a backslash and the character after it are kept as they stand.
// Line feeds inside the string are not counted.
void Lexer::lex_string(Token& token, const char* start) {
    const char* text = start + 1;
    const char* quote = closing_quote(text);
    cursor_ = quote == end_ ? end_ : quote + 1;
    return set(token, STRING, std::string_view(text, static_cast<std::size_t>(quote - text)), file_, line_);
}

// The quote that ends a string starting at `from`, or end_. Strings are long and seldom hold
// a backslash, so both are searched with memchr rather than byte by byte.
const char* Lexer::closing_quote(const char* from) const {
    for (;;) {
        const char* quote = find(from, end_, '"');
        const char* backslash = find(from, quote, '\\');
        if (backslash == quote) return quote;
        if (end_ - backslash <= 1) return end_;
        from = backslash + 2;  // the escaped character is passed, a quote included
    }
}

void Lexer::take_integer_suffix() {
    for (int i = 0; i < 2 && chars::is_byte(*cursor_, chars::INT_SUFFIX); ++i) ++cursor_;
}

void Lexer::lex_number(Token& token, const char* start) {
    if (*start == '0') {
        const char next = *cursor_;
        std::uint8_t digits = 0;
        if (next == '.') return lex_float(token, start, true);
        if (chars::is_byte(next, chars::OCTAL) && next != '0') digits = chars::OCTAL;
        if (next == 'x' || next == 'X') digits = chars::HEX;
        if (next == 'b' || next == 'B') digits = chars::DIGIT;  // narrowed to 0 and 1 below
        if (digits == 0) return make(token, INTEGER, start);
        if (digits != chars::OCTAL) ++cursor_;
        const bool binary = digits == chars::DIGIT;
        while (binary ? (*cursor_ == '0' || *cursor_ == '1') : chars::is_byte(*cursor_, digits)) ++cursor_;
        take_integer_suffix();
        return make(token, INTEGER, start);
    }
    cursor_ = skip(cursor_, chars::DIGIT);
    if (*cursor_ == '.' || *cursor_ == 'e' || *cursor_ == 'E') return lex_float(token, start, true);
    take_integer_suffix();
    return make(token, INTEGER, start);
}

// Entered after the integer part, or after a '.' that starts the literal. The text always
// gets its '.', so 2e3 reads as "2.e3".
void Lexer::lex_float(Token& token, const char* start, bool has_integer_part) {
    bool dot = !has_integer_part;
    if (has_integer_part && *cursor_ == '.') {
        ++cursor_;
        dot = true;
    }
    const char* fraction = cursor_;
    if (dot)
        cursor_ = skip(cursor_, chars::DIGIT);
    if (!has_integer_part && cursor_ == fraction) return set(token, ERROR, messages::malformed_float, file_, line_);
    const char* rest = cursor_;
    if (*cursor_ == 'e' || *cursor_ == 'E') {
        ++cursor_;
        if (*cursor_ == '+' || *cursor_ == '-') ++cursor_;
        cursor_ = skip(cursor_, chars::DIGIT);
    }
    if (chars::is_byte(*cursor_, chars::FLOAT_SUFFIX)) ++cursor_;
    if (dot) return make(token, FLOAT, start);
    // No '.' in the source: the text gets one, so it is made for the token.
    std::string text(start, rest);
    text += '.';
    text.append(rest, cursor_);
    return set(token, FLOAT, made_texts_->keep(text), file_, line_);
}

}  // namespace edd
