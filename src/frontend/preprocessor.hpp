// The preprocessor: a token stream over the main lexer that carries out directives and
// expands macros lazily, one token per request. Every failure inside it is reported and
// delivered as an ERROR token; next_token never throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "files/input_files.hpp"
#include "frontend/kept_tokens.hpp"
#include "frontend/lexer.hpp"
#include "frontend/macro_table.hpp"
#include "frontend/text_store.hpp"
#include "frontend/token_sequence.hpp"
#include "frontend/token_stream.hpp"

namespace edd {

class Preprocessor final : public TokenStream {
public:
    // Thrown after a failed directive or expansion has printed its error line.
    struct PreprocessorError {};

    Preprocessor(Lexer& main, std::vector<std::string> include_paths, InputFiles& files, Diagnostics& diagnostics);
    ~Preprocessor() override;

    Token next_token() override {
        Token token;
        deliver(false, token);
        return token;
    }
    void read_significant(Token& token) override { deliver(true, token); }
    int current_line() const override { return current_line_; }

    // Guards against input that would otherwise exhaust memory or time.
    static constexpr std::size_t max_include_depth = 200;
    // Macro expansion produces at most max_expansion_tokens in all, plus the allowance for
    // every token read from a file: time stays linear in the input, whatever the macros do,
    // and real descriptions stay far below either figure.
    static constexpr std::size_t max_expansion_tokens = std::size_t{1} << 18;
    static constexpr std::size_t expansion_tokens_per_source_token = 64;
    // The same for memory: the tokens held at once in macro bodies, arguments, expansions
    // waiting to be read and kept branches (a shared body counts once).
    static constexpr std::size_t max_held_tokens = std::size_t{1} << 20;
    static constexpr std::size_t held_tokens_per_source_token = 4;
    // Conditionals and macro calls inside arguments are read recursively.
    static constexpr std::size_t max_nesting = 256;

private:
    using Arguments = std::vector<TokenBlock>;

    // Tokens to read before the lexer's: an expansion or a kept branch, read from the
    // front. An expansion's frame names its macro, which expands again once the frame is
    // read to its end.
    struct Frame {
        Frame(std::shared_ptr<const TokenSequence> tokens, std::string_view macro);
        // The next token without taking it; null when the frame is read to its end.
        const Token* peek(bool skip_blanks) const;
        bool enter_next_span();

        std::shared_ptr<const TokenSequence> tokens;
        std::size_t span = 0;
        const Token* next = nullptr;
        const Token* end = nullptr;
        std::string_view macro;
    };

    // The next token delivered, or an ERROR token after a failure was reported.
    void deliver(bool significant, Token& token);
    std::optional<Token> handle_directive();
    void define_macro();
    std::vector<std::string> read_parameters();
    void undefine_macro();
    void conditional(std::string_view directive);
    Token collect_branch(bool drop, KeptTokens& kept);
    void include_file();
    std::shared_ptr<const std::string> include_text(const std::string& path);

    bool expand(const Token& name, bool apply_operators);
    bool take_over_body(const Token& name, TokenSequence& body);
    bool names_no_macro(const TokenSequence& tokens) const;
    void charge(std::size_t produced);
    bool holds_too_much() const;
    void check_held();
    Arguments collect_arguments(bool apply_operators);
    std::shared_ptr<const TokenSequence> substitute(const Macro& macro, const Arguments& arguments,
                                                    bool apply_operators);

    class NestingGuard;

    // The next token of the lexers, counted for the budgets. Tokens on the way to the
    // parser are written in place, never copied whole (see Lexer::read).
    void fetch(Token& token) {
        reading_->read(token);
        if (token.is(END_OF_FILE) && !includes_.empty()) leave_include(token);
        const std::size_t count = token_count(token);
        source_tokens_ += count;
        expansion_budget_ += expansion_tokens_per_source_token * count;
    }
    Token fetch() {
        Token token;
        fetch(token);
        return token;
    }
    void leave_include(Token& token);
    // The same, skipping blanks, line ends and comments (counted all the same).
    void fetch_significant(Token& token) {
        std::size_t count = 0;
        reading_->read_past_blanks(token, count);
        if (token.is(END_OF_FILE) && !includes_.empty()) leave_include(token);
        count += token_count(token);
        source_tokens_ += count;
        expansion_budget_ += expansion_tokens_per_source_token * count;
    }
    // The next token, from the frames, the tokens looked at ahead or the lexers.
    void take_raw(Token& token) {
        if (frames_.empty() && lookahead_.empty()) {  // most tokens: straight from the lexer
            fetch(token);
            take_position(token);
            return;
        }
        take_pending(token);
    }
    Token take_raw() {
        Token token;
        take_raw(token);
        return token;
    }
    void take_pending(Token& token);
    Token take_raw_word();
    const Token& peek_raw(bool skip_blanks);
    void skip_rest_of_line(const Token& last);
    // Messages name the position of the token read last.
    void take_position(const Token& token) {
        current_file_ = token.file();
        current_line_ = token.line();
    }

    void warning(std::string_view message);
    void error(std::string_view message);
    [[noreturn]] void fail(std::string_view message);

    Lexer& main_;
    InputFiles& files_;
    Diagnostics& diagnostics_;
    FileIndex current_file_ = 0;
    int current_line_ = 0;
    // Declared before everything that counts into it.
    std::size_t held_tokens_ = 0;
    MacroTable macros_;
    std::vector<Frame> frames_;           // innermost last
    std::deque<Token> lookahead_;         // read from the lexers, not yet taken
    std::vector<std::string> include_paths_;
    std::vector<std::unique_ptr<Lexer>> includes_;
    Lexer* reading_;  // the innermost include, or the main lexer
    // The include files read so far: their tokens may be held until the end, and a file
    // included again is not read again.
    std::unordered_map<std::string, std::shared_ptr<const std::string>> include_texts_;
    std::shared_ptr<TextStore> made_texts_ = std::make_shared<TextStore>();
    std::unordered_set<std::string> runaway_files_;
    bool skipping_ = false;
    // The branches being collected, innermost last.
    std::vector<KeptTokens*> collecting_;
    std::size_t nesting_ = 0;
    bool nesting_reported_ = false;  // the guard reports once; the levels beyond it add nothing
    // Macros whose expansion is still being read; they do not expand again meanwhile. The
    // names view the texts of the tokens that called them.
    std::unordered_set<std::string_view> active_;
    // Tokens macro expansion may still produce, and the tokens read from files so far.
    std::size_t expansion_budget_ = max_expansion_tokens;
    std::size_t source_tokens_ = 0;
};

}  // namespace edd
