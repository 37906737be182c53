// SPDX-License-Identifier: Apache-2.0
// The reading base of the EDDL parser and the dictionary reader: the token under
// examination and the one consumed last, the reporters, and the few ways of consuming a
// token. Reports name the position of the token consumed last; the texts handed out stay
// valid as long as the token stream. Words and punctuators are tested by their numbers
// (at("IF") compares the number the compiler found for "IF"); a string literal never counts
// as the word or punctuator it happens to spell: its token carries no word.
//
//   accept     consumes the token only when it matches
//   expect...  consumes one token; a mismatch is fatal (reported, then ParseError thrown)
//   read...    consumes one token; a mismatch is reported and reading goes on
#pragma once

#include <cstdint>
#include <string_view>

#include "diagnostics/diagnostics.hpp"
#include "frontend/token_stream.hpp"
#include "parser/word_set.hpp"

namespace edd {

class TokenReader {
public:
    TokenReader(TokenStream& source, Diagnostics& diagnostics);
    virtual ~TokenReader() = default;
    TokenReader(const TokenReader&) = delete;
    TokenReader& operator=(const TokenReader&) = delete;

    // The run's count: a nested reader (an imported file) counts into the same one.
    int get_error_count() const { return diagnostics_.errors(); }

protected:
    // The next token, not yet consumed.
    const Token& peek() const { return slots_[peek_slot_]; }
    // The token consumed last.
    const Token& consumed() const { return slots_[peek_slot_ ^ 1]; }
    // The text of the word a token stands for: its text, or nothing for a string literal.
    static std::string_view word_text(const Token& token) { return token.is(STRING) ? std::string_view() : token.text(); }
    std::string_view peek_word() const { return word_text(peek()); }
    std::string_view consumed_word() const { return word_text(consumed()); }
    Diagnostics& diagnostics() const { return diagnostics_; }

    // Consumes one significant token; blanks, line ends, comments and ERROR tokens are
    // skipped, and each ERROR token counts as an error (its line was printed already).
    void advance() {
        peek_slot_ ^= 1;
        source_.read_significant(slots_[peek_slot_]);
        if (slots_[peek_slot_].is(ERROR)) skip_errors();
    }

    bool at(Word word) const { return peek().word() == word; }
    bool at_one_of(WordSet words) const { return words.contains(peek().word()); }
    bool at_kind(std::uint32_t kind) const { return peek().is(kind); }
    bool at_end() const { return peek().is(END_OF_FILE) && peek().text().empty(); }
    bool accept(Word word) {
        if (!at(word)) return false;
        advance();
        return true;
    }

    void error(std::string_view message);
    void warning(std::string_view message);
    // Reports the message as an error and throws ParseError.
    [[noreturn]] void fatal(std::string_view message);
    // A fault of the converter rather than of the description: the failure and the position
    // of the token consumed last, on standard error, not counted.
    void report_fault(std::string_view failure);
    // Reports "failure in parser: message(type_name)" as a fault and throws ParseError.
    [[noreturn]] void fault(std::string_view message, std::string_view type_name);
    // The message with %0 the consumed token's text, %1 that token printed, %2 `expected`.
    [[noreturn]] void fatal_at_consumed(std::string_view message, std::string_view expected = {});

    // A token of the word, any kind: "Expected word but got ...".
    void expect(Word word) {
        if (at(word)) advance();
        else refuse_expected(word);
    }
    // A token of `kind`; the message as for fatal_at_consumed. Returns its text.
    std::string_view expect_kind(std::uint32_t kind, std::string_view message) {
        if (!at_kind(kind)) refuse_expected_kind(message);
        advance();
        return consumed().text();
    }
    // A token whose text is one of `words`; the message lists them in byte order.
    std::string_view expect_one_of(WordSet words);

    // An integer's value, or "Expected integer" and 0.
    std::uint64_t read_integer();
    // A name: an identifier, or a reserved word (with a warning when `warn`); anything else
    // is reported and gives the empty text.
    std::string_view read_identifier(bool warn) {
        // An attribute or type name is a keyword read without a warning: no detour for it.
        if (!at_kind(IDENTIFIER) && (warn || !at_kind(EDDL_KEYWORD))) return read_other_identifier(warn);
        advance();
        return consumed().text();
    }

    // Bounds recursion so that hostile nesting fails with a message, not a stack overflow.
    class DepthGuard {
    public:
        explicit DepthGuard(TokenReader& reader);
        ~DepthGuard() { --reader_.depth_; }
        DepthGuard(const DepthGuard&) = delete;
        DepthGuard& operator=(const DepthGuard&) = delete;

    private:
        TokenReader& reader_;
    };
    static constexpr int max_depth = 1000;

private:
    void skip_errors();
    // The rarer paths of the above, out of line: they consume the token and report.
    [[noreturn]] void refuse_expected(Word word);
    [[noreturn]] void refuse_expected_kind(std::string_view message);
    std::string_view read_other_identifier(bool warn);

    // The consumed token and the one under examination; advancing swaps their roles and
    // reads the next token straight into the slot freed.
    Token slots_[2];
    unsigned peek_slot_ = 0;
    TokenStream& source_;
    Diagnostics& diagnostics_;
    int depth_ = 0;
};

}  // namespace edd
