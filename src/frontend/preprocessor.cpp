#include "frontend/preprocessor.hpp"

#include <algorithm>
#include <exception>
#include <typeinfo>
#include <utility>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "diagnostics/type_name.hpp"

namespace edd {

namespace {

// Marks the end of a macro's expansion in the pending tokens; its text names the macro.
// No lexer produces this kind.
constexpr std::uint32_t EXPANSION_END = 0xFFFFFFFFu;

bool is_blank(const Token& t) { return t.is(WHITESPACE) || t.is(NEWLINE) || t.is(COMMENT); }

bool ends_line(const Token& t) { return t.is(NEWLINE) || t.is(END_OF_FILE); }

// The lexers read here give a run of blanks as one WHITESPACE token, which saves a token
// per blank. Wherever a number of tokens shows (the expansion budget, "#" of an argument),
// a run counts one per character, as if each blank were a token of its own.
std::size_t token_count(const Token& t) { return t.is(WHITESPACE) ? std::max<std::size_t>(t.text().size(), 1) : 1; }

std::size_t token_count(const std::vector<Token>& tokens) {
    std::size_t count = 0;
    for (const Token& t : tokens) count += token_count(t);
    return count;
}

void trim_blanks(std::vector<Token>& tokens) {
    std::size_t end = tokens.size();
    while (end > 0 && is_blank(tokens[end - 1])) --end;
    tokens.resize(end);
    std::size_t begin = 0;
    while (begin < tokens.size() && is_blank(tokens[begin])) ++begin;
    tokens.erase(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(begin));
}

// Restores the skipping flag however a branch ends.
class SkippingScope {
public:
    SkippingScope(bool& flag, bool value) : flag_(flag), saved_(flag) { flag_ = value; }
    ~SkippingScope() { flag_ = saved_; }
    SkippingScope(const SkippingScope&) = delete;
    SkippingScope& operator=(const SkippingScope&) = delete;

private:
    bool& flag_;
    bool saved_;
};

}  // namespace

// Bounds the recursion of conditionals and of macro calls inside arguments, so that hostile
// input ends with an error instead of exhausting the stack.
class Preprocessor::NestingGuard {
public:
    explicit NestingGuard(Preprocessor& pp) : pp_(pp) {
        if (pp_.nesting_ >= max_nesting) {
            if (std::exchange(pp_.nesting_reported_, true)) throw PreprocessorError{};
            pp_.fail(messages::nesting_too_deep);
        }
        ++pp_.nesting_;  // after the check: a throwing constructor runs no destructor
    }
    ~NestingGuard() { --pp_.nesting_; }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;

private:
    Preprocessor& pp_;
};

Preprocessor::Preprocessor(Lexer& main, std::vector<std::string> include_paths, InputFiles& files,
                           Diagnostics& diagnostics)
    : main_(main), files_(files), diagnostics_(diagnostics), include_paths_(std::move(include_paths)) {
    main_.set_blank_runs(true);
}

Token Preprocessor::next_token() {
    try {
        return deliver();
    } catch (const PreprocessorError&) {
    } catch (const FileTooLarge& e) {  // an include that never ends
        error(e.what());
    } catch (const std::exception& e) {
        std::string message(messages::preprocessor_failure_with);
        message += e.what();
        message += readable_type_name(typeid(e));
        error(message);
    } catch (...) {
        error(messages::preprocessor_failure);
    }
    return Token(ERROR, std::string(messages::preprocessor_error_token), current_file_, current_line_);
}

Token Preprocessor::deliver() {
    for (;;) {
        Token token = take_raw();
        if (token.is(PREPROCESSOR_SWITCH)) {
            if (auto result = handle_directive()) return std::move(*result);
            continue;
        }
        if (token.is(IDENTIFIER) && expand(token, true)) continue;
        return token;
    }
}

// ---- Raw reading -------------------------------------------------------------------------

Token Preprocessor::fetch() {
    Token token = (includes_.empty() ? main_ : *includes_.back()).next_token();
    while (token.is(END_OF_FILE) && !includes_.empty()) {
        includes_.pop_back();  // reading goes on in the file that included it
        token = (includes_.empty() ? main_ : *includes_.back()).next_token();
    }
    expansion_budget_ += expansion_tokens_per_source_token * token_count(token);
    return token;
}

Token Preprocessor::take_raw() {
    for (;;) {
        if (pending_.empty()) {
            Token token = fetch();
            take_position(token);
            return token;
        }
        Token token = std::move(pending_.front());
        pending_.pop_front();
        if (token.is(EXPANSION_END)) {
            if (auto active = active_.find(token.text()); active != active_.end()) active_.erase(active);
            continue;
        }
        take_position(token);
        return token;
    }
}

Token Preprocessor::take_raw_word() {
    Token token = take_raw();
    while (token.is(WHITESPACE)) token = take_raw();
    return token;
}

const Token& Preprocessor::peek_raw(bool skip_blanks) {
    for (std::size_t i = 0;; ++i) {
        if (i == pending_.size()) pending_.push_back(fetch());
        const Token& token = pending_[i];
        if (token.is(EXPANSION_END) || (skip_blanks && token.is(WHITESPACE))) continue;
        return token;
    }
}

void Preprocessor::skip_rest_of_line(const Token& last) {
    if (ends_line(last)) return;
    for (Token token = take_raw(); !ends_line(token); token = take_raw()) {
    }
}

// ---- Messages -----------------------------------------------------------------------------

void Preprocessor::warning(std::string_view message) {
    diagnostics_.preprocessor(Severity::warning, file_name_of(current_file_), current_line_, message);
}

void Preprocessor::error(std::string_view message) {
    diagnostics_.preprocessor(Severity::error, file_name_of(current_file_), current_line_, message);
}

void Preprocessor::fail(std::string_view message) {
    error(message);
    throw PreprocessorError{};
}

// ---- Directives ---------------------------------------------------------------------------

// directive : '#' [ name { token } ] NEWLINE
std::optional<Token> Preprocessor::handle_directive() {
    Token name = take_raw_word();
    if (name.is(NEWLINE)) return name;
    if (!name.is(IDENTIFIER) && !name.is(METHOD_KEYWORD)) fail(format_message(messages::unknown_directive, {name.text()}));
    const std::string_view word = name.text();
    if (word == "define") {
        define_macro();
    } else if (word == "undef") {
        undefine_macro();
    } else if (word == "if" || word == "ifdef" || word == "ifndef") {
        conditional(word);
    } else if (word == "else" || word == "endif") {
        name.set_kind(PREPROCESSOR_SWITCH);  // the directive's word stands for it
        return name;
    } else if (word == "include") {
        include_file();
    } else if (word == "line") {
        warning(messages::line_not_implemented);
        skip_rest_of_line(name);
    } else {
        fail(format_message(messages::unknown_directive, {word}));
    }
    return std::nullopt;
}

// define : 'define' name [ '(' parameters ')' ] { token } NEWLINE
void Preprocessor::define_macro() {
    Token name = take_raw_word();
    if (!name.is(IDENTIFIER) && !name.is(EDDL_KEYWORD) && !name.is(METHOD_KEYWORD)) {
        error(format_message(messages::macro_name_not_identifier, {name.text()}));
        skip_rest_of_line(name);
        return;
    }
    Macro macro{std::string(name.text()), {}, {}};
    if (peek_raw(false).is(LEFT_BRACKET)) {
        take_raw();
        macro.parameters = read_parameters();
    }
    // The body is read with expansion: macros known now are replaced now.
    for (;;) {
        if (ends_line(peek_raw(false))) break;
        Token token = take_raw();
        if (token.is(IDENTIFIER) && expand(token, false)) continue;
        macro.body.push_back(std::move(token));
    }
    trim_blanks(macro.body);
    if (skipping_) return;
    if (macros_.contains(macro.name)) {
        warning(format_message(messages::macro_already_defined, {macro.name}));
        return;
    }
    macros_.add(std::move(macro));
    ++macro_version_;
}

// parameters : name { ',' name }
std::vector<std::string> Preprocessor::read_parameters() {
    auto is_name = [](const Token& t) { return t.is(IDENTIFIER) || t.is(EDDL_KEYWORD); };
    Token token = take_raw_word();
    if (!is_name(token)) {
        warning(messages::empty_macro_arguments);
        return {};
    }
    std::vector<std::string> parameters{std::string(token.text())};
    for (;;) {
        token = take_raw_word();
        if (token.is(RIGHT_BRACKET)) return parameters;
        if (!token.is(COMMA)) fail(messages::error_in_argument_list);
        token = take_raw_word();
        if (!is_name(token)) fail(messages::error_in_argument_list);
        parameters.emplace_back(token.text());
    }
}

// undef : 'undef' identifier
void Preprocessor::undefine_macro() {
    Token name = take_raw_word();
    if (!name.is(IDENTIFIER)) fail(messages::macro_name_must_be_identifier);
    if (!macros_.contains(name.text())) fail(format_message(messages::undefine_unknown_macro, {name.text()}));
    macros_.remove(name.text());
}

// What a branch keeps. The kept tokens of a nested conditional are read once more by the
// branch around it, and so on outwards; most tokens read back as themselves, and those
// are taken over whole instead (reading them again at every level would cost depth times
// size). `settled` counts the leading tokens known to read back as themselves while the
// macro definitions are those of `version`.
struct Preprocessor::KeptTokens {
    std::vector<Token> tokens;
    bool drop = false;
    std::size_t settled = 0;
    std::uint64_t version = 0;
    // Only a nested conditional's tokens can be taken over; outermost ones are not checked.
    bool nested = false;
};

// conditional : ( 'if' token | 'ifdef' identifier | 'ifndef' identifier ) NEWLINE
//               { token } [ '#' 'else' NEWLINE { token } ] '#' 'endif'
// Both branches are read eagerly; the kept one is delivered afterwards, from the pending
// tokens. No expression is evaluated: only a literal 0 is false.
void Preprocessor::conditional(std::string_view directive) {
    NestingGuard guard(*this);
    Token operand = take_raw_word();
    bool condition = true;
    if (directive == "if") {
        condition = !(operand.is(INTEGER) && operand.text() == "0");
    } else {
        if (!operand.is(IDENTIFIER)) fail(messages::macro_name_must_be_identifier);
        condition = macros_.contains(operand.text()) == (directive == "ifdef");
    }
    skip_rest_of_line(operand);
    KeptTokens kept;
    kept.version = macro_version_;
    kept.nested = !collecting_.empty();
    Token end = collect_branch(!condition, kept);
    if (end.text() == "else") {
        skip_rest_of_line(end);
        collect_branch(condition, kept);
    }
    // Inside another branch, the tokens would be read next by that branch: when reading
    // them changes nothing, it gets them as they are, and the position they would leave.
    if (kept.nested && settle(kept)) {
        if (!kept.tokens.empty()) take_position(kept.tokens.back());
        KeptTokens& outer = *collecting_.back();
        if (!outer.drop) take_over(outer, std::move(kept));
        return;
    }
    pending_.insert(pending_.begin(), std::make_move_iterator(kept.tokens.begin()),
                    std::make_move_iterator(kept.tokens.end()));
}

// Reads one branch up to its "else" or "endif"; a dropped branch is read with the skipping
// flag set, so that its defines and includes take no effect.
Token Preprocessor::collect_branch(bool drop, KeptTokens& kept) {
    SkippingScope scope(skipping_, skipping_ || drop);
    kept.drop = drop;
    collecting_.push_back(&kept);
    struct Pop {
        std::vector<KeptTokens*>& stack;
        ~Pop() { stack.pop_back(); }
    } pop{collecting_};
    for (;;) {
        Token token = next_token();
        if (token.is(PREPROCESSOR_SWITCH) && (token.text() == "else" || token.text() == "endif")) return token;
        if (token.is(END_OF_FILE)) fail(messages::eof_in_conditional);
        if (!drop) keep(kept, std::move(token));
    }
}

// True when delivering the token again would give the token itself and do nothing else.
bool Preprocessor::reads_back(const Token& token) const {
    if (token.is(IDENTIFIER)) return !macros_.contains(token.text());
    return !token.is(PREPROCESSOR_SWITCH) && !token.is(EXPANSION_END);
}

// Whether every kept token reads back as itself under the macros defined now.
bool Preprocessor::settle(KeptTokens& kept) const {
    if (kept.version != macro_version_) {
        kept.settled = 0;
        kept.version = macro_version_;
    }
    while (kept.settled < kept.tokens.size() && reads_back(kept.tokens[kept.settled])) ++kept.settled;
    return kept.settled == kept.tokens.size();
}

void Preprocessor::keep(KeptTokens& kept, Token token) const {
    if (kept.nested && kept.settled == kept.tokens.size() && kept.version == macro_version_ && reads_back(token))
        ++kept.settled;
    kept.tokens.push_back(std::move(token));
}

// Appends a settled `inner`. A nested conditional is mostly the bulk of its branch, so an
// outer branch with fewer tokens so far goes in front of the inner one instead.
void Preprocessor::take_over(KeptTokens& outer, KeptTokens&& inner) const {
    const bool all_settled = outer.settled == outer.tokens.size() && outer.version == macro_version_;
    if (outer.tokens.size() < inner.tokens.size()) {
        inner.tokens.insert(inner.tokens.begin(), std::make_move_iterator(outer.tokens.begin()),
                            std::make_move_iterator(outer.tokens.end()));
        outer.tokens = std::move(inner.tokens);
    } else {
        outer.tokens.insert(outer.tokens.end(), std::make_move_iterator(inner.tokens.begin()),
                            std::make_move_iterator(inner.tokens.end()));
    }
    if (all_settled) outer.settled = outer.tokens.size();
}

// include : 'include' string
// Only the include paths are searched, never the directory of the including file.
void Preprocessor::include_file() {
    Token name = take_raw_word();
    if (name.is(LESS_THEN)) fail(messages::include_angle_brackets);
    if (!name.is(STRING)) fail(messages::include_no_file);
    if (skipping_) return;
    if (includes_.size() >= max_include_depth) {
        // Reading goes on in the main file: a file that includes itself twice would
        // otherwise be read again below every level, exponentially often. The files of the
        // runaway chain are remembered, so that a later include of one of them fails at
        // once instead of running down the whole chain again.
        for (const auto& open : includes_) runaway_files_.insert(open->file_name());
        includes_.clear();
        fail(messages::include_too_deep);
    }
    for (const std::string& path : include_paths_) {
        std::string candidate = path + "/";
        candidate += name.text();
        if (runaway_files_.contains(candidate)) fail(messages::include_too_deep);
        if (auto text = files_.read(candidate)) {
            includes_.push_back(std::make_unique<Lexer>(Lexer::FromText{}, std::move(*text), candidate, diagnostics_));
            includes_.back()->set_blank_runs(true);
            return;
        }
    }
    std::string message = format_message(messages::include_not_found, {name.text()});
    message += '\n';
    message += messages::include_path_is;
    message += '\n';
    for (const std::string& path : include_paths_) {
        message += path;
        message += '\n';
    }
    fail(message);
}

// ---- Macro expansion ----------------------------------------------------------------------

// Expands a macro call whose name was just read, putting the result in front of the pending
// tokens. False when `name` is no macro, is being expanded already, or is a function-like
// macro without arguments.
bool Preprocessor::expand(const Token& name, bool apply_operators) {
    const Macro* macro = macros_.find(name.text());
    if (macro == nullptr || active_.contains(macro->name)) return false;
    Arguments arguments;
    if (macro->function_like()) {
        if (!peek_raw(true).is(LEFT_BRACKET)) return false;
        while (!take_raw().is(LEFT_BRACKET)) {
        }
        arguments = collect_arguments(apply_operators);
        if (arguments.size() != macro->parameters.size()) fail(messages::parameter_count_mismatch);
    }
    std::vector<Token> expansion = substitute(*macro, arguments, apply_operators);
    const std::size_t produced = token_count(expansion);
    if (produced > expansion_budget_) fail(messages::macro_expansion_too_large);
    expansion_budget_ -= produced;
    active_.insert(macro->name);
    Token end = name;  // the marker's text names the macro
    end.set_kind(EXPANSION_END);
    pending_.push_front(std::move(end));
    pending_.insert(pending_.begin(), std::make_move_iterator(expansion.begin()),
                    std::make_move_iterator(expansion.end()));
    return true;
}

// arguments : [ argument { ',' argument } ] ')'   — commas inside parentheses do not split
Preprocessor::Arguments Preprocessor::collect_arguments(bool apply_operators) {
    NestingGuard guard(*this);
    Arguments arguments(1);
    int depth = 0;
    for (;;) {
        if (peek_raw(false).is(END_OF_FILE)) break;
        Token token = take_raw();
        if (token.is(IDENTIFIER) && expand(token, apply_operators)) continue;
        if (token.is(LEFT_BRACKET)) {
            ++depth;
        } else if (token.is(RIGHT_BRACKET)) {
            if (depth == 0) break;
            --depth;
        } else if (token.is(COMMA) && depth == 0) {
            arguments.emplace_back();
            continue;
        }
        arguments.back().push_back(std::move(token));
    }
    for (auto& argument : arguments) trim_blanks(argument);
    return arguments;
}

// Copies the body with parameters replaced by their arguments; in the normal token flow
// "#" (stringify) and "##" (paste) are applied in the same left-to-right walk.
std::vector<Token> Preprocessor::substitute(const Macro& macro, const Arguments& arguments, bool apply_operators) {
    auto parameter_of = [&](const Token& t) -> const std::vector<Token>* {
        if (!t.is(IDENTIFIER) && !t.is(EDDL_KEYWORD)) return nullptr;
        for (std::size_t i = 0; i < macro.parameters.size(); ++i)
            if (macro.parameters[i] == t.text()) return &arguments[i];
        return nullptr;
    };
    auto next_word = [&](std::size_t i) {
        while (i < macro.body.size() && macro.body[i].is(WHITESPACE)) ++i;
        return i;
    };
    const auto& body = macro.body;
    std::vector<Token> out;
    out.reserve(body.size());
    std::size_t produced = 0;  // token_count(out)
    auto append = [&](std::vector<Token>::const_iterator first, std::vector<Token>::const_iterator last) {
        for (auto it = first; it != last; ++it) produced += token_count(*it);
        out.insert(out.end(), first, last);
    };
    for (std::size_t i = 0; i < body.size(); ++i) {
        // Checked as the copy grows, so that a runaway expansion is never built whole.
        if (produced > expansion_budget_) fail(messages::macro_expansion_too_large);
        const Token& token = body[i];
        if (apply_operators && token.is(PREPROCESSOR_SWITCH)) {
            const std::size_t j = next_word(i + 1);
            if (j == body.size()) fail(messages::stringify_without_content);
            std::string text = "\"";
            if (const auto* argument = parameter_of(body[j])) {
                for (const Token& part : *argument) {
                    if (is_blank(part)) text.append(token_count(part), ' ');
                    else text += part.text();
                }
            } else {
                text += body[j].text();
            }
            text += '"';
            out.emplace_back(STRING, std::move(text), token.file(), token.line());
            ++produced;
            i = j;
            continue;
        }
        if (apply_operators && token.is(PREPROCESSOR_PASTE)) {
            while (!out.empty() && out.back().is(WHITESPACE)) {
                produced -= token_count(out.back());
                out.pop_back();
            }
            const std::size_t j = next_word(i + 1);
            const std::vector<Token>* argument = j < body.size() ? parameter_of(body[j]) : nullptr;
            const Token* right = j == body.size() ? nullptr
                                 : argument == nullptr ? &body[j]
                                 : argument->empty()   ? nullptr
                                                       : &argument->front();
            if (out.empty() || right == nullptr) fail(messages::paste_without_content);
            std::string pasted(out.back().text());
            pasted += right->text();
            out.back().set_text(std::move(pasted));
            if (argument != nullptr) append(argument->begin() + 1, argument->end());
            i = j;
            continue;
        }
        if (const auto* argument = parameter_of(token)) {
            append(argument->begin(), argument->end());
        } else {
            out.push_back(token);
            produced += token_count(token);
        }
    }
    return out;
}

}  // namespace edd
