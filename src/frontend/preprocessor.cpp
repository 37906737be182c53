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
    : main_(main),
      files_(files),
      diagnostics_(diagnostics),
      include_paths_(std::move(include_paths)),
      reading_(&main) {
    main_.set_blank_runs(true);
}

Preprocessor::~Preprocessor() = default;

// Blanks are neither directives nor macro names, so skipping them first changes nothing else.
void Preprocessor::deliver(bool significant, Token& token) {
    try {
        for (;;) {
            if (significant && frames_.empty() && lookahead_.empty()) {
                fetch_significant(token);  // most tokens: from the lexer, past the blanks
                take_position(token);
            } else {
                take_raw(token);
            }
            if (significant && is_blank(token)) continue;
            if (token.is(PREPROCESSOR_SWITCH)) {
                // An empty directive gives its line end.
                if (auto result = handle_directive(); result && !(significant && is_blank(*result))) {
                    token = *result;
                    return;
                }
                continue;
            }
            if (token.is(IDENTIFIER) && expand(token, true)) continue;
            return;
        }
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
    token = Token(ERROR, messages::preprocessor_error_token, current_file_, current_line_);
}

// ---- Raw reading -------------------------------------------------------------------------

Preprocessor::Frame::Frame(std::shared_ptr<const TokenSequence> tokens, std::string_view macro)
    : tokens(std::move(tokens)), macro(macro) {
    if (!this->tokens->empty()) {
        const auto first = this->tokens->spans().front().tokens();
        next = first.data();
        end = next + first.size();
    }
}

bool Preprocessor::Frame::enter_next_span() {
    const auto& spans = tokens->spans();
    while (span + 1 < spans.size()) {
        const auto part = spans[++span].tokens();
        next = part.data();
        end = next + part.size();
        if (next != end) return true;
    }
    return false;
}

const Token* Preprocessor::Frame::peek(bool skip_blanks) const {
    const auto& spans = tokens->spans();
    const Token* at = next;
    const Token* stop = end;
    for (std::size_t i = span;;) {
        for (; at != stop; ++at)
            if (!skip_blanks || !at->is(WHITESPACE)) return at;
        if (++i >= spans.size()) return nullptr;
        const auto part = spans[i].tokens();
        at = part.data();
        stop = at + part.size();
    }
}

// Reading goes on in the file that included the one ended.
void Preprocessor::leave_include(Token& token) {
    do {
        includes_.pop_back();
        reading_ = includes_.empty() ? &main_ : includes_.back().get();
        reading_->read(token);
    } while (token.is(END_OF_FILE) && !includes_.empty());
}

void Preprocessor::take_pending(Token& token) {
    while (!frames_.empty()) {
        Frame& frame = frames_.back();
        if (frame.next != frame.end || frame.enter_next_span()) {
            token = *frame.next++;
            take_position(token);
            return;
        }
        if (!frame.macro.empty()) active_.erase(frame.macro);
        frames_.pop_back();
    }
    if (lookahead_.empty()) {
        fetch(token);
    } else {
        token = lookahead_.front();
        lookahead_.pop_front();
    }
    take_position(token);
}

Token Preprocessor::take_raw_word() {
    Token token = take_raw();
    while (token.is(WHITESPACE)) token = take_raw();
    return token;
}

// Looks through the frames (passing the ends of expansions without acting on them) and
// then the lexer's tokens, reading more of those as needed.
const Token& Preprocessor::peek_raw(bool skip_blanks) {
    for (auto frame = frames_.rbegin(); frame != frames_.rend(); ++frame)
        if (const Token* token = frame->peek(skip_blanks)) return *token;
    for (std::size_t i = 0;; ++i) {
        if (i == lookahead_.size()) lookahead_.push_back(fetch());
        const Token& token = lookahead_[i];
        if (!skip_blanks || !token.is(WHITESPACE)) return token;
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
    Macro macro{std::string(name.text()), {}, nullptr};
    if (peek_raw(false).is(LEFT_BRACKET)) {
        take_raw();
        macro.parameters = read_parameters();
    }
    // The body is read with expansion: macros known now are replaced now.
    auto body = std::make_shared<TokenSequence>(held_tokens_);
    for (;;) {
        if (ends_line(peek_raw(false))) break;
        Token token = take_raw();
        if (token.is(IDENTIFIER) && (take_over_body(token, *body) || expand(token, false))) continue;
        body->push_back(token);
        check_held();
    }
    body->trim_blanks();
    macro.body = std::move(body);
    if (skipping_) return;
    if (macros_.contains(macro.name)) {
        warning(format_message(messages::macro_already_defined, {macro.name}));
        return;
    }
    macros_.add(std::move(macro));
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

// conditional : ( 'if' token | 'ifdef' identifier | 'ifndef' identifier ) NEWLINE
//               { token } [ '#' 'else' NEWLINE { token } ] '#' 'endif'
// Both branches are read eagerly; the kept one is delivered afterwards. No expression is
// evaluated: only a literal 0 is false.
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
    KeptTokens kept(!collecting_.empty(), macros_, held_tokens_);
    Token end = collect_branch(!condition, kept);
    if (end.text() == "else") {
        skip_rest_of_line(end);
        collect_branch(condition, kept);
    }
    // Inside another branch, the tokens would be read next by that branch: when reading
    // them changes nothing, it gets them as they are, and the position they would leave.
    if (kept.nested() && kept.settled()) {
        if (!kept.empty()) take_position(kept.back());
        KeptTokens& outer = *collecting_.back();
        if (!outer.dropping()) outer.take_over(std::move(kept));
        return;
    }
    if (!kept.empty())
        frames_.emplace_back(std::make_shared<const TokenSequence>(held_tokens_, kept.release()), std::string_view());
}

// Reads one branch up to its "else" or "endif"; a dropped branch is read with the skipping
// flag set, so that its defines and includes take no effect. A branch that would hold more
// than expansion may hold is reported once and keeps an ERROR token only.
Token Preprocessor::collect_branch(bool drop, KeptTokens& kept) {
    SkippingScope scope(skipping_, skipping_ || drop);
    kept.set_dropping(drop);
    collecting_.push_back(&kept);
    struct Pop {
        std::vector<KeptTokens*>& stack;
        ~Pop() { stack.pop_back(); }
    } pop{collecting_};
    for (;;) {
        Token token = next_token();
        if (token.is(PREPROCESSOR_SWITCH) && (token.text() == "else" || token.text() == "endif")) return token;
        if (token.is(END_OF_FILE)) fail(messages::eof_in_conditional);
        if (kept.dropping()) continue;
        kept.keep(token);
        if (holds_too_much()) {
            error(messages::macro_expansion_too_large);
            kept.give_up(Token(ERROR, messages::preprocessor_error_token, current_file_, current_line_));
        }
    }
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
        reading_ = &main_;
        fail(messages::include_too_deep);
    }
    for (const std::string& path : include_paths_) {
        std::string candidate = path + "/";
        candidate += name.text();
        if (runaway_files_.contains(candidate)) fail(messages::include_too_deep);
        if (auto text = include_text(candidate)) {
            includes_.push_back(
                std::make_unique<Lexer>(Lexer::FromText{}, std::move(text), candidate, diagnostics_, made_texts_));
            includes_.back()->set_blank_runs(true);
            reading_ = includes_.back().get();
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

std::shared_ptr<const std::string> Preprocessor::include_text(const std::string& path) {
    if (auto known = include_texts_.find(path); known != include_texts_.end()) return known->second;
    auto text = files_.read(path);
    if (!text) return nullptr;
    auto shared = std::make_shared<const std::string>(std::move(*text));
    include_texts_.emplace(path, shared);
    return shared;
}

// ---- Macro expansion ----------------------------------------------------------------------

// Expands a macro call whose name was just read: its expansion becomes the frame read next.
// False when `name` is no macro, is being expanded already, or is a function-like macro
// without arguments.
bool Preprocessor::expand(const Token& name, bool apply_operators) {
    const Macro* macro = macros_.find(name.text());
    if (macro == nullptr || active_.contains(name.text())) return false;
    std::shared_ptr<const TokenSequence> expansion;
    if (macro->function_like()) {
        if (!peek_raw(true).is(LEFT_BRACKET)) return false;
        while (!take_raw().is(LEFT_BRACKET)) {
        }
        const Arguments arguments = collect_arguments(apply_operators);
        if (arguments.size() != macro->parameters.size()) fail(messages::parameter_count_mismatch);
        expansion = substitute(*macro, arguments, apply_operators);
    } else if (apply_operators && macro->body->has_operators()) {
        expansion = substitute(*macro, {}, apply_operators);
    } else {
        expansion = macro->body;  // read as it stands, shared
    }
    charge(expansion->count());
    active_.insert(name.text());
    frames_.emplace_back(std::move(expansion), name.text());
    return true;
}

// A macro named in a body being defined is expanded and its tokens read again one by one.
// When reading them again gives them back unchanged (an object-like macro whose body names
// no macro now), its body is taken over whole instead, shared rather than copied.
bool Preprocessor::take_over_body(const Token& name, TokenSequence& body) {
    const Macro* macro = macros_.find(name.text());
    if (macro == nullptr || macro->function_like() || active_.contains(name.text())) return false;
    if (!names_no_macro(*macro->body)) return false;
    charge(macro->body->count());
    if (!macro->body->empty()) take_position(macro->body->back());
    body.append(*macro->body);
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
    if (produced > expansion_budget_) fail(messages::macro_expansion_too_large);
    expansion_budget_ -= produced;
}

bool Preprocessor::holds_too_much() const {
    return held_tokens_ > max_held_tokens + held_tokens_per_source_token * source_tokens_;
}

void Preprocessor::check_held() {
    if (holds_too_much()) fail(messages::macro_expansion_too_large);
}

// arguments : [ argument { ',' argument } ] ')'   — commas inside parentheses do not split
Preprocessor::Arguments Preprocessor::collect_arguments(bool apply_operators) {
    NestingGuard guard(*this);
    Arguments arguments;
    arguments.emplace_back(held_tokens_);
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
            arguments.emplace_back(held_tokens_);
            continue;
        }
        arguments.back().push_back(token);
        check_held();
    }
    for (auto& argument : arguments) argument.trim_blanks();
    return arguments;
}

// Copies the body with parameters replaced by their arguments; in the normal token flow
// "#" (stringify) and "##" (paste) are applied in the same left-to-right walk.
std::shared_ptr<const TokenSequence> Preprocessor::substitute(const Macro& macro, const Arguments& arguments,
                                                              bool apply_operators) {
    // The walk looks ahead by index, so a body of several spans is laid out in one piece.
    TokenBlock flat(held_tokens_);
    std::span<const Token> body;
    if (macro.body->spans().size() == 1) {
        body = macro.body->spans().front().tokens();
    } else {
        for (const auto& span : macro.body->spans()) flat.append(span.tokens());
        check_held();
        body = flat.tokens();
    }
    auto parameter_of = [&](const Token& t) -> const TokenBlock* {
        if (!t.is(IDENTIFIER) && !t.is(EDDL_KEYWORD)) return nullptr;
        for (std::size_t i = 0; i < macro.parameters.size(); ++i)
            if (macro.parameters[i] == t.text()) return &arguments[i];
        return nullptr;
    };
    auto next_word = [&](std::size_t i) {
        while (i < body.size() && body[i].is(WHITESPACE)) ++i;
        return i;
    };
    TokenBlock out(held_tokens_);
    std::size_t produced = 0;  // token_count of out
    auto append = [&](std::span<const Token> tokens) {
        for (const Token& t : tokens) produced += token_count(t);
        out.append(tokens);
    };
    for (std::size_t i = 0; i < body.size(); ++i) {
        // Checked as the copy grows, so that a runaway expansion is never built whole.
        if (produced > expansion_budget_) fail(messages::macro_expansion_too_large);
        check_held();
        const Token& token = body[i];
        if (apply_operators && token.is(PREPROCESSOR_SWITCH)) {
            const std::size_t j = next_word(i + 1);
            if (j == body.size()) fail(messages::stringify_without_content);
            std::string text = "\"";
            if (const auto* argument = parameter_of(body[j])) {
                for (const Token& part : argument->tokens()) {
                    if (is_blank(part)) text.append(token_count(part), ' ');
                    else text += part.text();
                }
            } else {
                text += body[j].text();
            }
            text += '"';
            out.push_back(Token(STRING, made_texts_->keep(std::move(text)), token.file(), token.line()));
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
            const TokenBlock* argument = j < body.size() ? parameter_of(body[j]) : nullptr;
            const Token* right = j == body.size() ? nullptr
                                 : argument == nullptr ? &body[j]
                                 : argument->empty()   ? nullptr
                                                       : &argument->tokens().front();
            if (out.empty() || right == nullptr) fail(messages::paste_without_content);
            std::string pasted(out.back().text());
            pasted += right->text();
            Token left = out.back();
            out.pop_back();
            out.push_back(Token(left.kind(), made_texts_->keep(std::move(pasted)), left.file(), left.line()));
            if (argument != nullptr) append(argument->tokens().subspan(1));
            i = j;
            continue;
        }
        if (const auto* argument = parameter_of(token)) {
            append(argument->tokens());
        } else {
            out.push_back(token);
            produced += token_count(token);
        }
    }
    return std::make_shared<const TokenSequence>(held_tokens_, std::move(out));
}

}  // namespace edd
