// The reading base of the EDDL parser and the dictionary reader: the current and look-ahead
// tokens, the reporters with their counters, and the token-expectation operations with
// their exact messages. Fatal operations report, count and then throw ParseError.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "diagnostics/diagnostics.hpp"
#include "frontend/token_stream.hpp"
#include "model/value.hpp"

namespace edd {

class TokenReader {
public:
    TokenReader(TokenStream& source, Diagnostics& diagnostics);
    virtual ~TokenReader() = default;
    TokenReader(const TokenReader&) = delete;
    TokenReader& operator=(const TokenReader&) = delete;

    // The run's counts: a nested reader (an imported file) counts into the same ones.
    int get_error_count() const { return diagnostics_.errors(); }
    int get_warning_count() const { return diagnostics_.warnings(); }

protected:
    const Token& current() const { return current_; }
    const Token& lookahead() const { return lookahead_; }
    // Moves the current token's text out, for a caller that keeps the token; the position
    // stays for messages until the next advance.
    Token take_current() { return std::move(current_); }
    Diagnostics& diagnostics() const { return diagnostics_; }

    // Moves on by one significant token; blanks, line ends, comments and ERROR tokens are
    // skipped, and each ERROR token counts as an error (its line was printed already).
    void advance();

    void error(std::string_view message);
    void warning(std::string_view message);
    void information(std::string_view message);
    [[noreturn]] void fatal(std::string_view message);

    bool at_end() const { return lookahead_.is(END_OF_FILE) && lookahead_.text().empty(); }
    // A string literal never counts as the word or punctuator it happens to spell.
    bool at(std::string_view text) const { return lookahead_.text() == text && !lookahead_.is(STRING); }
    bool at_kind(std::uint32_t kind) const { return lookahead_.is(kind); }

    // Each consumes exactly one token, whether it matches or not.
    void expect(std::string_view text);
    void expect_token(const Token& token);
    ValuePtr expect_integer();
    ValuePtr expect_float();
    ValuePtr expect_keyword();
    std::string expect_string_literal();
    std::string parse_string_literal();
    std::uint64_t parse_integer_or_fail();
    std::uint64_t parse_integer();
    std::string parse_keyword_text();
    ValuePtr parse_keyword(std::string_view word);
    ValuePtr parse_one_of(const std::set<std::string, std::less<>>& words);
    std::string parse_identifier(bool warn);

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
    Token current_;
    Token lookahead_;
    TokenStream& source_;
    Diagnostics& diagnostics_;
    int depth_ = 0;
};

}  // namespace edd
