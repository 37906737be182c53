// The preprocessor: a token stream over the main lexer that carries out directives and
// expands macros lazily, one token per request. Every failure inside it is reported and
// delivered as an ERROR token; next_token never throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "files/input_files.hpp"
#include "frontend/lexer.hpp"
#include "frontend/macro_table.hpp"
#include "frontend/token_stream.hpp"

namespace edd {

class Preprocessor : public TokenStream {
public:
    // Thrown after a failed directive or expansion has printed its error line.
    struct PreprocessorError {};

    Preprocessor(Lexer& main, std::vector<std::string> include_paths, InputFiles& files, Diagnostics& diagnostics);

    Token next_token() override;
    int current_line() const override { return current_line_; }

    // Guards against input that would otherwise exhaust memory or time.
    static constexpr std::size_t max_include_depth = 200;
    // Macro expansion produces at most max_expansion_tokens in all, plus the allowance for
    // every token read from a file: time and memory stay linear in the input, whatever the
    // macros do, and real descriptions stay far below either figure.
    static constexpr std::size_t max_expansion_tokens = std::size_t{1} << 18;
    static constexpr std::size_t expansion_tokens_per_source_token = 64;
    // Conditionals and macro calls inside arguments are read recursively.
    static constexpr std::size_t max_nesting = 256;

private:
    using Arguments = std::vector<std::vector<Token>>;

    Token deliver();
    std::optional<Token> handle_directive();
    void define_macro();
    std::vector<std::string> read_parameters();
    void undefine_macro();
    void conditional(std::string_view directive);
    struct KeptTokens;
    Token collect_branch(bool drop, KeptTokens& kept);
    bool reads_back(const Token& token) const;
    bool settle(KeptTokens& kept) const;
    void keep(KeptTokens& kept, Token token) const;
    void take_over(KeptTokens& outer, KeptTokens&& inner) const;
    void include_file();

    bool expand(const Token& name, bool apply_operators);
    Arguments collect_arguments(bool apply_operators);
    std::vector<Token> substitute(const Macro& macro, const Arguments& arguments, bool apply_operators);

    class NestingGuard;

    Token fetch();
    Token take_raw();
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
    MacroTable macros_;
    std::deque<Token> pending_;
    std::vector<std::string> include_paths_;
    std::vector<std::unique_ptr<Lexer>> includes_;
    std::unordered_set<std::string> runaway_files_;
    bool skipping_ = false;
    // The branches being collected, innermost last.
    std::vector<KeptTokens*> collecting_;
    // Counts definitions: what was found about the macro names in a text holds while it stays.
    std::uint64_t macro_version_ = 0;
    std::size_t nesting_ = 0;
    bool nesting_reported_ = false;  // the guard reports once; the levels beyond it add nothing
    // Macros whose expansion is still being read; they do not expand again meanwhile.
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>{}(name); }
    };
    std::unordered_set<std::string, NameHash, std::equal_to<>> active_;
    // Tokens macro expansion may still produce.
    std::size_t expansion_budget_ = max_expansion_tokens;
};

}  // namespace edd
