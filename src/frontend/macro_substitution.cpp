// SPDX-License-Identifier: Apache-2.0
#include "frontend/macro_substitution.hpp"

#include <string>

#include "diagnostics/messages.hpp"
#include "frontend/keywords.hpp"

namespace edd {

MacroSubstitution::MacroSubstitution(const Macro& macro, const MacroArguments& arguments, PreprocessorLimits& limits,
                                     TextStore& texts, const PreprocessorReporter& reporter)
    : macro_(macro),
      arguments_(arguments),
      limits_(limits),
      texts_(texts),
      reporter_(reporter),
      body_(*macro.body),
      out_(limits.held_tokens(), macro.body->memory()) {  // where the preprocessor holds tokens
    // Arguments are mostly a token each: the body's size spares the regrowth of most copies.
    out_.reserve(macro.body->size());
    for (const auto& parameter : macro.parameters) parameter_lengths_ |= std::uint64_t{1} << length_bit(parameter);
}

std::shared_ptr<const TokenSequence> MacroSubstitution::run(bool apply_operators) {
    for (;;) {
        copy_plain_run(apply_operators);
        const Token* token = body_.take();
        if (token == nullptr) break;
        check_limits();
        if (apply_operators && token->is(PREPROCESSOR_SWITCH)) {
            stringify(*token);
        } else if (apply_operators && token->is(PREPROCESSOR_PASTE)) {
            paste();
        } else if (const TokenBlock* argument = argument_of(*token)) {
            produce(argument->tokens());
        } else {
            produce(*token);
        }
    }
    return make_shared_in<const TokenSequence>(out_.memory(), limits_.held_tokens(), std::move(out_));
}

// Most of a body is copied as it stands: the tokens ahead in the span being read that stand
// for no argument and, where operators apply, are none, up to the next that does. They
// are copied at once where the guard would pass each of them one by one; what the guard
// counts only grows along them, so it is asked as the last of them would ask it. Where it
// would fail, they are left to be copied one by one, and it fails where it always did.
void MacroSubstitution::copy_plain_run(bool apply_operators) {
    const std::span<const Token> ahead = body_.rest_of_span();
    std::size_t plain = 0;
    std::size_t count = 0;
    for (; plain < ahead.size(); ++plain) {
        const Token& token = ahead[plain];
        if (argument_of(token) != nullptr) break;
        if (apply_operators && (token.is(PREPROCESSOR_SWITCH) || token.is(PREPROCESSOR_PASTE))) break;
        count += token_count(token);
    }
    if (plain < 2) return;
    const std::size_t before_last = produced_ + count - token_count(ahead[plain - 1]);
    if (!limits_.affords(before_last) || limits_.holds_too_much(plain - 1)) return;
    out_.append(ahead.first(plain));
    produced_ += count;
    body_.pass(plain);
}

// Checked as the copy grows, so that a runaway expansion is never built whole.
void MacroSubstitution::check_limits() {
    if (!limits_.affords(produced_)) {
        limits_.charge(produced_);
        reporter_.fail(messages::macro_expansion_too_large);
    }
    if (limits_.holds_too_much()) reporter_.fail(messages::macro_expansion_too_large);
}

const TokenBlock* MacroSubstitution::argument_named(std::string_view name) const {
    for (std::size_t i = 0; i < macro_.parameters.size(); ++i)
        if (macro_.parameters[i] == name) return &arguments_[i];
    return nullptr;
}

// '#' word : one STRING token whose text is the word's, or the argument's tokens with each
// blank a space, between double quotes that the text keeps.
void MacroSubstitution::stringify(const Token& hash) {
    const Token* word = body_.take_word();
    if (word == nullptr) reporter_.fail(messages::stringify_without_content);
    std::string text = "\"";
    if (const TokenBlock* argument = argument_of(*word)) {
        for (const Token& part : argument->tokens()) {
            if (is_blank(part)) text.append(token_count(part), ' ');
            else text += part.text();
        }
    } else {
        text += word->text();
    }
    text += '"';
    produce(Token(STRING, made_text(text, {}), hash.file(), hash.line()));
}

// left '##' right : the token produced last and the next one joined into one, of the left
// token's kind and at its place; the blanks around "##" go.
void MacroSubstitution::paste() {
    while (!out_.empty() && out_.back().is(WHITESPACE)) {
        produced_ -= token_count(out_.back());
        out_.pop_back();
    }
    const Token* word = body_.take_word();
    const TokenBlock* argument = word == nullptr ? nullptr : argument_of(*word);
    const Token* right = argument == nullptr ? word : argument->empty() ? nullptr : &argument->tokens().front();
    if (out_.empty() || right == nullptr) reporter_.fail(messages::paste_without_content);
    const Token left = out_.back();
    out_.pop_back();
    const std::string_view text = made_text(left.text(), right->text());
    out_.push_back(Token(left.kind(), text, left.file(), left.line(), word_of(left.kind(), text)));
    if (argument != nullptr) produce(argument->tokens().subspan(1));
}

// The texts made stay to the end of the run, so they are bounded like tokens.
std::string_view MacroSubstitution::made_text(std::string_view first, std::string_view second) {
    if (!limits_.charge_text(first.size() + second.size())) reporter_.fail(messages::macro_expansion_too_large);
    return texts_.join(first, second);
}

void MacroSubstitution::produce(std::span<const Token> tokens) {
    for (const Token& token : tokens) produced_ += token_count(token);
    out_.append(tokens);
}

}  // namespace edd
