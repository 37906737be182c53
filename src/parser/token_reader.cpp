// SPDX-License-Identifier: Apache-2.0
#include "parser/token_reader.hpp"

#include "diagnostics/exceptions.hpp"
#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "text/text_utils.hpp"

namespace edd {

TokenReader::TokenReader(TokenStream& source, Diagnostics& diagnostics) : source_(source), diagnostics_(diagnostics) {
    advance();
}

void TokenReader::skip_errors() {
    Token& token = slots_[peek_slot_];
    while (token.is(ERROR)) {
        diagnostics_.count_error();
        source_.read_significant(token);
    }
}

void TokenReader::error(std::string_view message) {
    diagnostics_.report(Severity::error, consumed().file_name(), consumed().line(), message);
}

void TokenReader::warning(std::string_view message) {
    diagnostics_.report(Severity::warning, consumed().file_name(), consumed().line(), message);
}

void TokenReader::report_fault(std::string_view failure) {
    diagnostics_.standard_error(failure);
    diagnostics_.standard_error(
        format_message(messages::failure_position, {position_text(consumed().file_name(), consumed().line())}));
}

void TokenReader::fault(std::string_view message, std::string_view type_name) {
    report_fault(format_message(messages::failure_in_parser_with, {message, type_name}));
    throw ParseError(std::string(message));
}

void TokenReader::fatal(std::string_view message) {
    error(message);
    throw ParseError(std::string(message));
}

void TokenReader::fatal_at_consumed(std::string_view message, std::string_view expected) {
    fatal(format_message(message, {consumed().text(), to_string(consumed()), expected}));
}

TokenReader::DepthGuard::DepthGuard(TokenReader& reader) : reader_(reader) {
    if (reader_.depth_ >= max_depth) reader_.fatal(messages::nesting_too_deep);
    ++reader_.depth_;  // after the check: a throwing constructor runs no destructor
}

void TokenReader::refuse_expected(Word word) {
    advance();
    fatal_at_consumed(messages::expected_text, spelling_of(word));
}

void TokenReader::refuse_expected_kind(std::string_view message) {
    advance();
    fatal_at_consumed(message);
}

std::string_view TokenReader::expect_one_of(WordSet words) {
    advance();
    if (!words.contains(consumed().word())) {
        std::string list;
        for (std::string_view word : words.words()) {
            if (!list.empty()) list += ", ";
            list += word;
        }
        fatal_at_consumed(messages::expected_keywords, list);
    }
    return consumed().text();
}

std::uint64_t TokenReader::read_integer() {
    advance();
    if (!consumed().is(INTEGER)) {
        error(messages::expected_integer);
        return 0;
    }
    return to_integer(consumed().text());
}

std::string_view TokenReader::read_other_identifier(bool warn) {
    advance();
    std::string_view warning_message;
    switch (consumed().kind()) {
    case IDENTIFIER: return consumed().text();
    case EDDL_KEYWORD: warning_message = messages::reserved_eddl_keyword; break;
    case METHOD_KEYWORD: warning_message = messages::reserved_method_keyword; break;
    case RESERVED_WORD: warning_message = messages::reserved_keyword; break;
    default: error(format_message(messages::expected_identifier_but_got, {consumed().text()})); return {};
    }
    if (warn) warning(format_message(warning_message, {consumed().text()}));
    return consumed().text();
}

}  // namespace edd
