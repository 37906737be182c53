// SPDX-License-Identifier: Apache-2.0
// The preprocessor: a token stream over the main lexer that carries out directives and
// expands macros lazily, one token per request. Its raw tokens come from one stack of
// sources (files, expansions, kept branches); its bounds from one limits object; its open
// conditionals from one stack. Every failure inside it is reported and delivered as an
// ERROR token: next_token never throws.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/input_files.hpp"
#include "frontend/conditional_stack.hpp"
#include "frontend/include_files.hpp"
#include "frontend/lexer.hpp"
#include "frontend/macro_substitution.hpp"
#include "frontend/macro_table.hpp"
#include "frontend/preprocessor_limits.hpp"
#include "frontend/preprocessor_reporter.hpp"
#include "frontend/source_stack.hpp"
#include "frontend/text_store.hpp"
#include "frontend/token_memory.hpp"
#include "frontend/token_stream.hpp"

namespace edd {

class Preprocessor final : public TokenStream {
public:
    using PreprocessorError = edd::PreprocessorError;

    Preprocessor(Lexer& main, std::vector<std::string> include_paths, InputFiles& files, Diagnostics& diagnostics);
    ~Preprocessor() override;

    Token next_token() override {
        Token token;
        deliver(false, token, false);
        return token;
    }
    void read_significant(Token& token) override;
    int current_line() const override { return sources_.line(); }

private:
    class NestingLevel;

    void deliver(bool significant, Token& token, bool in_hand);
    Token failure_token() const;
    bool collected(Token& token);
    void keep(const Token& token);

    std::optional<Token> directive();
    void define_macro();
    std::pmr::vector<std::pmr::string> read_parameters();
    std::shared_ptr<const TokenSequence> read_body();
    void undefine_macro();
    void open_conditional(std::string_view directive);
    bool condition_of(std::string_view directive, const Token& operand) const;
    void close_conditional();
    void include_file();

    bool expand(const Token& name, bool apply_operators);
    bool expand(std::shared_ptr<const Macro> macro, bool apply_operators);
    bool expand_delivered(Token& token);
    bool take_over_body(const Token& name, TokenSequence& body);
    bool names_no_macro(const TokenSequence& tokens) const;
    MacroArguments collect_arguments(bool apply_operators, std::size_t expected);
    void charge(std::size_t produced);
    void check_held() const;

    Token take();
    Token take_word();
    void skip_rest_of_line(const Token& last);
    Token error_token() const;

    Diagnostics& diagnostics_;
    TokenMemory memory_;         // first: everything below holds tokens in it
    PreprocessorLimits limits_;  // and counts them into this
    MacroTable macros_{&memory_};
    SourceStack sources_;
    PreprocessorReporter reporter_;
    ConditionalStack conditionals_;
    IncludeFiles includes_;
    std::shared_ptr<TextStore> made_texts_ = std::make_shared<TextStore>();
};

}  // namespace edd
