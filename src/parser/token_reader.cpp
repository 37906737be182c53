#include "parser/token_reader.hpp"

#include "diagnostics/exceptions.hpp"
#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "frontend/keywords.hpp"
#include "model/simple_value.hpp"
#include "text/text_utils.hpp"

namespace edd {

TokenReader::TokenReader(TokenStream& source, Diagnostics& diagnostics)
    : source_(source), diagnostics_(diagnostics) {
    advance();
}

void TokenReader::advance() {
    Token token = source_.next_token();
    for (;;) {
        const auto kind = token.kind();
        if (kind == ERROR) diagnostics_.count_error();
        else if (kind != WHITESPACE && kind != NEWLINE && kind != COMMENT) break;
        token = source_.next_token();
    }
    current_ = std::move(lookahead_);
    lookahead_ = std::move(token);
}

void TokenReader::error(std::string_view message) {
    diagnostics_.report(Severity::error, current_.file_name(), current_.line(), message);
}

void TokenReader::warning(std::string_view message) {
    diagnostics_.report(Severity::warning, current_.file_name(), current_.line(), message);
}

void TokenReader::information(std::string_view message) {
    diagnostics_.report(Severity::information, current_.file_name(), current_.line(), message);
}

void TokenReader::fatal(std::string_view message) {
    error(message);
    throw ParseError(std::string(message));
}

TokenReader::DepthGuard::DepthGuard(TokenReader& reader) : reader_(reader) {
    if (reader_.depth_ >= max_depth) reader_.fatal(messages::nesting_too_deep);
    ++reader_.depth_;  // after the check: a throwing constructor runs no destructor
}

void TokenReader::expect(std::string_view text) {
    advance();
    if (current_.text() != text)
        fatal(concat({messages::expected, text, messages::but_got, current_.text()}));
}

void TokenReader::expect_token(const Token& token) {
    advance();
    if (current_ != token)
        fatal(concat({messages::expected, to_string(token), messages::but_got, to_string(current_)}));
}

ValuePtr TokenReader::expect_integer() {
    advance();
    if (!current_.is(INTEGER)) fatal(concat({messages::expected_integer_but_got, current_.text()}));
    return make_value<SimpleValue>(ValueKind::INTEGER, std::string(current_.text()));
}

ValuePtr TokenReader::expect_float() {
    advance();
    if (!current_.is(FLOAT)) fatal(concat({messages::expected_float_but_got, current_.text()}));
    return make_value<SimpleValue>(ValueKind::FLOAT, std::string(current_.text()));
}

ValuePtr TokenReader::expect_keyword() {
    advance();
    if (!current_.is(EDDL_KEYWORD)) fatal(concat({messages::expected_keyword_but_got, current_.text()}));
    return make_value<SimpleValue>(ValueKind::KEYWORD, std::string(current_.text()));
}

std::string TokenReader::expect_string_literal() {
    advance();
    if (!current_.is(STRING)) fatal(format_message(messages::expected_string_literal, {to_string(current_)}));
    return std::string(current_.text());
}

std::string TokenReader::parse_string_literal() {
    advance();
    if (!current_.is(STRING))
        fatal(std::string(messages::expected_string_literal_and_got) + to_string(current_) + '.');
    return std::string(current_.text());
}

// Reads an integer but words its failure like the string reader; the wording is kept.
std::uint64_t TokenReader::parse_integer_or_fail() {
    advance();
    if (!current_.is(INTEGER))
        fatal(std::string(messages::expected_string_literal_and_got) + to_string(current_) + '.');
    return to_integer(current_.text());
}

std::uint64_t TokenReader::parse_integer() {
    advance();
    if (!current_.is(INTEGER)) {
        error(messages::expected_integer);
        return 0;
    }
    return to_integer(current_.text());
}

std::string TokenReader::parse_keyword_text() {
    advance();
    if (!current_.is(EDDL_KEYWORD)) {
        error(concat({messages::expected_capital_keyword_but_got, current_.text(), "."}));
        return std::string();
    }
    return std::string(current_.text());
}

ValuePtr TokenReader::parse_keyword(std::string_view word) {
    advance();
    if (current_.text() != word) {
        error(concat({messages::expected_keyword_word, word, messages::but_got, current_.text(), "."}));
        return ValuePtr();
    }
    return make_value<SimpleValue>(ValueKind::KEYWORD, std::string(current_.text()));
}

ValuePtr TokenReader::parse_one_of(const std::set<std::string, std::less<>>& words) {
    advance();
    if (!words.contains(current_.text())) {
        std::string message(messages::expected_keywords);
        bool first = true;
        for (const std::string& word : words) {
            if (!first) message += ", ";
            first = false;
            message += word;
        }
        message += messages::but_got_colon;
        message += current_.text();
        message += '.';
        fatal(message);
    }
    return make_value<SimpleValue>(ValueKind::KEYWORD, std::string(current_.text()));
}

// A reserved word is accepted as a name, with a warning when the caller asks for one.
std::string TokenReader::parse_identifier(bool warn) {
    advance();
    switch (current_.kind()) {
    case IDENTIFIER: return std::string(current_.text());
    case EDDL_KEYWORD:
        if (warn) warning(concat({current_.text(), messages::reserved_eddl_keyword}));
        return std::string(current_.text());
    case METHOD_KEYWORD:
        if (warn) warning(concat({current_.text(), messages::reserved_method_keyword}));
        return std::string(current_.text());
    case RESERVED_WORD:
        if (warn) warning(concat({current_.text(), messages::reserved_keyword}));
        return std::string(current_.text());
    default: error(concat({messages::expected_identifier_but_got, current_.text()})); return std::string();
    }
}

}  // namespace edd
