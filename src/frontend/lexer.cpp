#include "frontend/lexer.hpp"

#include "diagnostics/messages.hpp"
#include "diagnostics/report.hpp"
#include "frontend/char_class.hpp"
#include "frontend/keywords.hpp"
#include "frontend/punctuators.hpp"
#include "frontend/source_text.hpp"

namespace edd {

Lexer::Lexer(const std::string& file_name, std::ostream& diagnostics)
    : source_(read_file(file_name).value_or(std::string())),
      file_(intern_file_name(file_name)),
      diagnostics_(diagnostics) {
    start();
}

Lexer::Lexer(std::istream& input, std::string_view file_name, std::ostream& diagnostics)
    : source_(read_stream(input)), file_(intern_file_name(file_name)), diagnostics_(diagnostics) {
    start();
}

Lexer::Lexer(std::istream& input, std::string_view file_name) : Lexer(input, file_name, std::cerr) {}

Lexer::Lexer(FromText, std::string text, std::string_view file_name, std::ostream& diagnostics)
    : source_(std::move(text)), file_(intern_file_name(file_name)), diagnostics_(diagnostics) {
    start();
}

Lexer Lexer::from_text(std::string text, std::string_view file_name, std::ostream& diagnostics) {
    return Lexer(FromText{}, std::move(text), file_name, diagnostics);
}

int Lexer::read() {
    return position_ < source_.size() ? static_cast<unsigned char>(source_[position_++]) : -1;
}

int Lexer::peek_after_next() const {
    return position_ < source_.size() ? static_cast<unsigned char>(source_[position_]) : -1;
}

// The first read drops a leading byte-order mark; each of its three bytes is tested on its
// own, so any of them, in order, is dropped at the start.
void Lexer::start() {
    // A byte 0xFF reads as the end-of-input value, so the text ends before the first one.
    if (auto end = source_.find('\xFF'); end != std::string::npos) source_.resize(end);
    int c = read();
    if (c == 0xEF) c = read();
    if (c == 0xBB) c = read();
    if (c == 0xBF) c = read();
    next_ = c;
}

void Lexer::advance() {
    if (current_ == -1) return;
    current_ = next_;
    next_ = read();
}

Token Lexer::next_token() {
    for (;;) {
        advance();
        switch (current_) {
        case -1: return make(END_OF_FILE, std::string());
        case '\t': case '\v': case '\r': case ' ': return make_char(WHITESPACE);
        case '\n': {
            Token token(NEWLINE, "\n", file_, line_);
            ++line_;
            return token;
        }
        case '(': case ')': case ',': case ':': case ';': case '?': case '[': case ']': case '{': case '}':
            return make_char(static_cast<std::uint32_t>(current_));
        case '!': case '#': case '%': case '&': case '*': case '+': case '-': case '.': case '/':
        case '<': case '=': case '>': case '^': case '|': case '~':
            return lex_operator();
        case '"': return lex_string();
        case '\\':
            if (next_ == '\r' || next_ == '\n') {
                advance();
                ++line_;
                if (current_ == '\r' && next_ == '\n') advance();
            } else {
                report_lexer_error(diagnostics_, file_name(), line_, messages::trailing_backslash);
                skip_after_backslash();
            }
            continue;
        default:
            if (chars::is(current_, chars::DIGIT)) return lex_number();
            if (chars::is(current_, chars::IDENT_START)) return lex_word();
            return make_char(UNDEFINED);
        }
    }
}

// Everything up to and including the next line feed is dropped, and every dropped character
// counts as a line: later positions in the file shift by the length of the dropped text.
void Lexer::skip_after_backslash() {
    for (;;) {
        advance();
        if (current_ == -1) return;
        ++line_;
        if (current_ == '\n') return;
    }
}

Token Lexer::lex_operator() {
    if (current_ == '.' && chars::is(next_, chars::DIGIT)) return lex_float(std::string());
    if (current_ == '/' && next_ == '*') return lex_block_comment();
    if (current_ == '/' && next_ == '/') return lex_line_comment();
    if (current_ == '#' && next_ == '#') {
        advance();
        return make(PREPROCESSOR_PASTE, "##");
    }
    // Longest match, at most three characters.
    const char spelled[3] = {static_cast<char>(current_), static_cast<char>(next_),
                             static_cast<char>(peek_after_next())};
    std::size_t length = 1;
    if (next_ >= 0 && peek_after_next() >= 0 && find_punctuator(std::string_view(spelled, 3))) length = 3;
    else if (next_ >= 0 && find_punctuator(std::string_view(spelled, 2))) length = 2;
    const auto kind = *find_punctuator(std::string_view(spelled, length));
    for (std::size_t i = 1; i < length; ++i) advance();
    return make(kind, std::string(spelled, length));
}

Token Lexer::lex_block_comment() {
    const int start_line = line_;
    std::string text = "/*";
    advance();  // the '*' of the opener cannot also close the comment
    for (;;) {
        advance();
        if (current_ == -1) break;
        text += static_cast<char>(current_);
        if (current_ == '\n') ++line_;
        if (current_ == '*' && next_ == '/') {
            advance();
            text += '/';
            break;
        }
    }
    return Token(COMMENT, std::move(text), file_, start_line);
}

Token Lexer::lex_line_comment() {
    std::string text = "/";
    while (next_ != '\n' && next_ != -1) {
        advance();
        text += static_cast<char>(current_);
    }
    return make(COMMENT, std::move(text));
}

// No escape is decoded: a backslash and the character after it are copied as they stand.
Token Lexer::lex_string() {
    std::string text;
    for (;;) {
        advance();
        if (current_ == -1 || current_ == '"') break;
        text += static_cast<char>(current_);
        if (current_ == '\\') {
            advance();
            if (current_ == -1) break;
            text += static_cast<char>(current_);
        }
    }
    return make(STRING, std::move(text));
}

void Lexer::take_integer_suffix(std::string& text) {
    for (int i = 0; i < 2 && chars::is(next_, chars::INT_SUFFIX); ++i) {
        advance();
        text += static_cast<char>(current_);
    }
}

Token Lexer::lex_number() {
    std::string text(1, static_cast<char>(current_));
    if (current_ == '0') {
        std::uint8_t digits = 0;
        if (next_ == '.') return lex_float(std::move(text));
        if (chars::is(next_, chars::OCTAL) && next_ != '0') digits = chars::OCTAL;
        if (next_ == 'x' || next_ == 'X') digits = chars::HEX;
        if (next_ == 'b' || next_ == 'B') digits = chars::DIGIT;  // narrowed to 0 and 1 below
        if (digits == 0) return make(INTEGER, std::move(text));
        if (digits != chars::OCTAL) {
            advance();
            text += static_cast<char>(current_);
        }
        const bool binary = digits == chars::DIGIT;
        while (binary ? (next_ == '0' || next_ == '1') : chars::is(next_, digits)) {
            advance();
            text += static_cast<char>(current_);
        }
        take_integer_suffix(text);
        return make(INTEGER, std::move(text));
    }
    while (chars::is(next_, chars::DIGIT)) {
        advance();
        text += static_cast<char>(current_);
    }
    if (next_ == '.' || next_ == 'e' || next_ == 'E') return lex_float(std::move(text));
    take_integer_suffix(text);
    return make(INTEGER, std::move(text));
}

// Entered on the last digit of the integer part, or on a '.' that starts the literal. The
// text always gets its '.', so 2e3 reads as "2.e3".
Token Lexer::lex_float(std::string integer_part) {
    std::string fraction;
    if (current_ != '.' && next_ == '.') advance();
    if (current_ == '.') {
        while (chars::is(next_, chars::DIGIT)) {
            advance();
            fraction += static_cast<char>(current_);
        }
    }
    if (integer_part.empty() && fraction.empty()) return make(ERROR, std::string(messages::malformed_float));
    std::string text = std::move(integer_part);
    text += '.';
    text += fraction;
    if (next_ == 'e' || next_ == 'E') {
        advance();
        text += static_cast<char>(current_);
        if (next_ == '+' || next_ == '-') {
            advance();
            text += static_cast<char>(current_);
        }
        while (chars::is(next_, chars::DIGIT)) {
            advance();
            text += static_cast<char>(current_);
        }
    }
    if (chars::is(next_, chars::FLOAT_SUFFIX)) {
        advance();
        text += static_cast<char>(current_);
    }
    return make(FLOAT, std::move(text));
}

Token Lexer::lex_word() {
    std::string text(1, static_cast<char>(current_));
    while (chars::is(next_, chars::IDENT_PART)) {
        advance();
        text += static_cast<char>(current_);
    }
    const auto kind = classify_word(text);
    return make(kind, std::move(text));
}

}  // namespace edd
