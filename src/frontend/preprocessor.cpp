// SPDX-License-Identifier: Apache-2.0
#include "frontend/preprocessor.hpp"

#include <exception>
#include <typeinfo>
#include <utility>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "diagnostics/type_name.hpp"

namespace edd {

namespace {

bool ends_line(const Token& t) { return t.is(NEWLINE) || t.is(END_OF_FILE); }

}  // namespace

// One level of nesting (an open conditional, a macro call inside an argument), given back
// when the guard goes unless an open conditional keeps it until its endif.
class Preprocessor::NestingLevel {
public:
    explicit NestingLevel(Preprocessor& pp) : limits_(pp.limits_) {
        if (!limits_.enter_level()) {
            if (limits_.first_time_too_deep()) pp.reporter_.fail(messages::nesting_too_deep);
            throw PreprocessorError{};
        }
    }
    ~NestingLevel() {
        if (held_) limits_.leave_level();
    }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;
    void pass_on() { held_ = false; }

private:
    PreprocessorLimits& limits_;
    bool held_ = true;
};

Preprocessor::Preprocessor(Lexer& main, std::vector<std::string> include_paths, InputFiles& files,
                           Diagnostics& diagnostics)
    : diagnostics_(diagnostics),
      sources_(main, limits_),
      reporter_(diagnostics, sources_),
      conditionals_(macros_, limits_.held_tokens(), &memory_),
      includes_(std::move(include_paths), files) {
    main.set_blank_runs(true);
}

Preprocessor::~Preprocessor() = default;

// ---- Delivery -----------------------------------------------------------------------------

// The common case in one short pass: outside every conditional, a token straight from the
// innermost source that starts no directive and may name no macro is delivered as it stands.
void Preprocessor::read_significant(Token& token) {
    if (conditionals_.empty() && sources_.next_significant_straight(token)) {
        if (!token.is(PREPROCESSOR_SWITCH) && !(token.is(IDENTIFIER) && macros_.may_name(token.text()))) return;
        return deliver(true, token, true);
    }
    deliver(true, token, false);
}

// The next token; `in_hand` when it is read already and only to be dealt with. While a
// conditional is open, what would be delivered goes to it instead; blanks are read as they
// stand then, since a kept branch is read again.
void Preprocessor::deliver(bool significant, Token& token, bool in_hand) {
    for (;; in_hand = false) {
        const bool collecting = !conditionals_.empty();
        try {
            if (!in_hand) {
                if (significant && !collecting) sources_.next_significant(token);
                else sources_.next(token);
            }
            if (token.is(PREPROCESSOR_SWITCH)) {
                // An empty directive gives its line end.
                std::optional<Token> result = directive();
                if (!result || (significant && !collecting && is_blank(*result))) continue;
                token = *result;
            } else if (token.is(IDENTIFIER) && macros_.may_name(token.text()) && expand_delivered(token)) {
                continue;
            }
        } catch (...) {
            token = failure_token();
        }
        if (!collecting || !collected(token)) return;
    }
}

// The ERROR token that stands for the failure being handled, once its line is printed.
Token Preprocessor::failure_token() const {
    try {
        throw;
    } catch (const PreprocessorError&) {
    } catch (const FileTooLarge& e) {  // an include that never ends
        reporter_.error(e.what());
    } catch (const std::exception& e) {
        reporter_.error(format_message(messages::preprocessor_failure_with, {e.what(), readable_type_name(typeid(e))}));
    } catch (...) {
        reporter_.error(messages::preprocessor_failure);
    }
    return error_token();
}

// The innermost conditional takes the token: an else or endif moves it on, the end of the
// input ends it with an error, anything else it keeps unless its branch is not taken.
// False when the token is to be delivered after all: the ERROR token for an end of input
// that closed the last open conditional.
bool Preprocessor::collected(Token& token) {
    if (token.is(PREPROCESSOR_SWITCH)) {  // the else and endif directives' words
        if (token.text() == "endif" || !conditionals_.enter_else()) close_conditional();
        else skip_rest_of_line(token);
        return true;
    }
    if (token.is(END_OF_FILE)) {
        reporter_.error(messages::eof_in_conditional);
        conditionals_.close();
        limits_.leave_level();
        token = error_token();
        if (conditionals_.empty()) return false;
    }
    keep(token);
    return true;
}

// A branch that would hold more than expansion may hold is reported once and keeps an
// ERROR token only.
void Preprocessor::keep(const Token& token) {
    KeptTokens& kept = conditionals_.innermost();
    if (kept.dropping()) return;
    kept.keep(token);
    if (limits_.holds_too_much()) {
        reporter_.error(messages::macro_expansion_too_large);
        kept.give_up(error_token());
    }
}

Token Preprocessor::error_token() const {
    return Token(ERROR, messages::preprocessor_error_token, sources_.file(), sources_.line());
}

// ---- Raw reading --------------------------------------------------------------------------

Token Preprocessor::take() {
    Token token;
    sources_.next(token);
    return token;
}

Token Preprocessor::take_word() {
    Token token = take();
    while (token.is(WHITESPACE)) token = take();
    return token;
}

void Preprocessor::skip_rest_of_line(const Token& last) {
    if (ends_line(last)) return;
    for (Token token = take(); !ends_line(token); token = take()) {
    }
}

// ---- Directives ---------------------------------------------------------------------------

// directive : '#' [ name { token } ] NEWLINE
std::optional<Token> Preprocessor::directive() {
    Token name = take_word();
    if (name.is(NEWLINE)) return name;
    if (!name.is(IDENTIFIER) && !name.is(METHOD_KEYWORD))
        reporter_.fail(format_message(messages::unknown_directive, {name.text()}));
    const std::string_view word = name.text();
    if (word == "define") {
        define_macro();
    } else if (word == "undef") {
        undefine_macro();
    } else if (word == "if" || word == "ifdef" || word == "ifndef") {
        open_conditional(word);
    } else if (word == "else" || word == "endif") {
        name.set_kind(PREPROCESSOR_SWITCH);  // the directive's word stands for it
        return name;
    } else if (word == "include") {
        include_file();
    } else if (word == "line") {
        reporter_.warning(messages::line_not_implemented);
        skip_rest_of_line(name);
    } else {
        reporter_.fail(format_message(messages::unknown_directive, {word}));
    }
    return std::nullopt;
}

// define : 'define' name [ '(' parameters ')' ] { token } NEWLINE
void Preprocessor::define_macro() {
    Token name = take_word();
    if (!name.is(IDENTIFIER) && !name.is(EDDL_KEYWORD) && !name.is(METHOD_KEYWORD)) {
        reporter_.error(format_message(messages::macro_name_not_identifier, {name.text()}));
        skip_rest_of_line(name);
        return;
    }
    Macro macro{std::pmr::string(name.text(), &memory_),
                std::pmr::vector<std::pmr::string>(&memory_), nullptr};
    if (sources_.bracket_next(false)) {
        take();
        macro.parameters = read_parameters();
    }
    macro.body = read_body();
    if (conditionals_.skipping()) return;
    if (macros_.contains(macro.name)) {
        reporter_.warning(format_message(messages::macro_already_defined, {macro.name}));
        return;
    }
    macros_.add(std::move(macro));
}

// parameters : name { ',' name } ')'
std::pmr::vector<std::pmr::string> Preprocessor::read_parameters() {
    auto is_name = [](const Token& t) { return t.is(IDENTIFIER) || t.is(EDDL_KEYWORD); };
    std::pmr::vector<std::pmr::string> parameters(&memory_);
    Token token = take_word();
    if (!is_name(token)) {
        reporter_.warning(messages::empty_macro_arguments);
        return parameters;
    }
    parameters.emplace_back(token.text());
    for (;;) {
        token = take_word();
        if (token.is(RIGHT_BRACKET)) return parameters;
        if (!token.is(COMMA)) reporter_.fail(messages::error_in_argument_list);
        token = take_word();
        if (!is_name(token)) reporter_.fail(messages::error_in_argument_list);
        parameters.emplace_back(token.text());
    }
}

// The body is read with expansion: macros known now are replaced now.
std::shared_ptr<const TokenSequence> Preprocessor::read_body() {
    auto body = make_shared_in<TokenSequence>(&memory_, limits_.held_tokens(), &memory_);
    while (!sources_.line_ends_next()) {
        Token token = take();
        if (token.is(IDENTIFIER) && (take_over_body(token, *body) || expand(token, false))) continue;
        body->push_back(token);
        check_held();
    }
    body->trim_blanks();
    return body;
}

// undef : 'undef' identifier
void Preprocessor::undefine_macro() {
    Token name = take_word();
    if (!name.is(IDENTIFIER)) reporter_.fail(messages::macro_name_must_be_identifier);
    if (!macros_.contains(name.text()))
        reporter_.fail(format_message(messages::undefine_unknown_macro, {name.text()}));
    macros_.remove(name.text());
}

// conditional : ( 'if' token | 'ifdef' identifier | 'ifndef' identifier ) NEWLINE
//               { token } [ '#' 'else' NEWLINE { token } ] '#' 'endif'
// Both branches are read now; the kept one is delivered again after the endif, so that a
// macro defined later in the branch still applies to its tokens.
void Preprocessor::open_conditional(std::string_view directive) {
    NestingLevel level(*this);
    const Token operand = take_word();
    const bool condition = condition_of(directive, operand);
    skip_rest_of_line(operand);
    conditionals_.open(condition);
    level.pass_on();
}

// No expression is evaluated: only a literal 0 is false.
bool Preprocessor::condition_of(std::string_view directive, const Token& operand) const {
    if (directive == "if") return !(operand.is(INTEGER) && operand.text() == "0");
    if (!operand.is(IDENTIFIER)) reporter_.fail(messages::macro_name_must_be_identifier);
    return macros_.contains(operand.text()) == (directive == "ifdef");
}

// Inside another branch, the kept tokens would be read next by that branch: where reading
// them changes nothing, it takes them over as they are, with the position they would leave,
// instead of reading them once more at every level around them.
void Preprocessor::close_conditional() {
    KeptTokens kept = conditionals_.close();
    limits_.leave_level();
    if (kept.nested() && kept.settled()) {
        if (!kept.empty()) sources_.take_position(kept.back());
        KeptTokens& outer = conditionals_.innermost();
        if (!outer.dropping()) outer.take_over(std::move(kept));
        return;
    }
    if (!kept.empty())
        sources_.push_tokens(make_shared_in<const TokenSequence>(&memory_, limits_.held_tokens(), kept.release()));
}

// include : 'include' string
void Preprocessor::include_file() {
    const Token name = take_word();
    if (name.is(LESS_THEN)) reporter_.fail(messages::include_angle_brackets);
    if (!name.is(STRING)) reporter_.fail(messages::include_no_file);
    if (conditionals_.skipping()) return;
    if (sources_.include_depth() >= PreprocessorLimits::max_include_depth) {
        // Reading goes on in the main file: a file that includes itself twice would
        // otherwise be read again below every level, exponentially often.
        includes_.mark_runaway(sources_.close_includes());
        reporter_.fail(messages::include_too_deep);
    }
    IncludeFiles::Found found = includes_.find(name.text());
    if (found.runaway) reporter_.fail(messages::include_too_deep);
    if (found.text == nullptr)
        reporter_.fail(format_message(messages::include_not_found, {name.text(), includes_.path_lines()}));
    auto lexer = std::make_unique<Lexer>(Lexer::FromText{}, std::move(found.text), found.path, diagnostics_, made_texts_);
    lexer->set_blank_runs(true);
    sources_.push_file(std::move(lexer));
}

// ---- Macro expansion ----------------------------------------------------------------------

// Expands a macro call whose name was just read: its expansion is read next. False when
// `name` is no macro, is being expanded already, or is a function-like macro without
// arguments.
bool Preprocessor::expand(const Token& name, bool apply_operators) {
    const std::shared_ptr<const Macro>* found = macros_.find(name.text());
    return found != nullptr && expand(*found, apply_operators);
}

// The same where a token is delivered. Most macros are constants: a body of one token that
// can name no macro and is no operator is delivered in the name's place, without a source
// of its own to be read from. True when an expansion is read next; false when `token` is
// delivered now, as it stands or so replaced.
bool Preprocessor::expand_delivered(Token& token) {
    const std::shared_ptr<const Macro>* found = macros_.find(token.text());
    if (found == nullptr) return false;
    const Macro& macro = **found;
    const TokenSequence& body = *macro.body;
    if (macro.expanding || macro.function_like() || body.count() != 1 || body.has_operators() ||
        body.back().is(IDENTIFIER))
        return expand(*found, true);
    charge(1);
    token = body.back();
    sources_.take_position(token);
    return false;
}

bool Preprocessor::expand(std::shared_ptr<const Macro> macro, bool apply_operators) {
    if (macro->expanding) return false;
    std::shared_ptr<const TokenSequence> expansion = macro->body;  // read as it stands, shared
    if (macro->function_like()) {
        if (!sources_.bracket_next(true)) return false;
        while (!take().is(LEFT_BRACKET)) {
        }
        const MacroArguments arguments = collect_arguments(apply_operators, macro->parameters.size());
        if (arguments.size() != macro->parameters.size()) reporter_.fail(messages::parameter_count_mismatch);
        expansion = MacroSubstitution(*macro, arguments, limits_, *made_texts_, reporter_).run(apply_operators);
    } else if (apply_operators && macro->body->has_operators()) {
        expansion = MacroSubstitution(*macro, {}, limits_, *made_texts_, reporter_).run(true);
    }
    charge(expansion->count());
    sources_.push_tokens(std::move(expansion), std::move(macro));
    return true;
}

// A macro named in a body being defined is expanded and its tokens read again one by one.
// When reading them again gives them back unchanged (an object-like macro whose body names
// no macro now), its body is taken over whole instead, shared rather than copied.
bool Preprocessor::take_over_body(const Token& name, TokenSequence& body) {
    const std::shared_ptr<const Macro>* found = macros_.find(name.text());
    if (found == nullptr) return false;
    const Macro& macro = **found;
    if (macro.function_like() || macro.expanding || !names_no_macro(*macro.body)) return false;
    charge(macro.body->count());
    if (!macro.body->empty()) sources_.take_position(macro.body->back());
    body.append(*macro.body);
    check_held();
    return true;
}

// Asked of whole blocks, whose answers are kept: a body shared many times is looked at
// once for each version of the macro table.
bool Preprocessor::names_no_macro(const TokenSequence& tokens) const {
    for (const auto& span : tokens.spans()) {
        const TokenBlock& block = *span.block;
        auto& check = block.macro_check;
        if (check.version != macros_.version() || check.size != block.size()) {
            check.version = macros_.version();
            check.size = block.size();
            check.names_no_macro = true;
            for (const Token& token : block.tokens()) {
                if (token.is(IDENTIFIER) && macros_.contains(token.text())) {
                    check.names_no_macro = false;
                    break;
                }
            }
        }
        if (!check.names_no_macro) return false;
    }
    return true;
}

void Preprocessor::charge(std::size_t produced) {
    if (!limits_.charge(produced)) reporter_.fail(messages::macro_expansion_too_large);
}

void Preprocessor::check_held() const {
    if (limits_.holds_too_much()) reporter_.fail(messages::macro_expansion_too_large);
}

// arguments : [ argument { ',' argument } ] ')'   — commas inside parentheses do not split
MacroArguments Preprocessor::collect_arguments(bool apply_operators, std::size_t expected) {
    NestingLevel level(*this);
    MacroArguments arguments;
    arguments.reserve(expected);
    arguments.emplace_back(limits_.held_tokens(), &memory_);
    int depth = 0;
    while (!sources_.input_ends_next()) {
        const Token token = take();
        if (token.is(IDENTIFIER) && expand(token, apply_operators)) continue;
        if (token.is(LEFT_BRACKET)) {
            ++depth;
        } else if (token.is(RIGHT_BRACKET)) {
            if (depth-- == 0) break;
        } else if (token.is(COMMA) && depth == 0) {
            arguments.emplace_back(limits_.held_tokens(), &memory_);
            continue;
        }
        arguments.back().push_back(token);
        check_held();
    }
    for (auto& argument : arguments) argument.trim_blanks();
    return arguments;
}

}  // namespace edd
