// SPDX-License-Identifier: Apache-2.0
#include "frontend/kept_tokens.hpp"

namespace edd {

KeptTokens::KeptTokens(bool nested, const MacroTable& macros, std::size_t& tally, std::pmr::memory_resource* memory)
    : tokens_(tally, memory), macros_(macros), version_(macros.version()), nested_(nested) {}

void KeptTokens::give_up(const Token& error) {
    given_up_ = true;
    tokens_.clear();
    settled_ = 0;
    keep(error);
}

void KeptTokens::keep(const Token& token) {
    if (nested_ && all_settled() && reads_back(token)) ++settled_;
    tokens_.push_back(token);
}

// The preprocessor's markers never reach a branch, and a directive's word does not read
// back as itself.
bool KeptTokens::reads_back(const Token& token) const {
    if (token.is(IDENTIFIER)) return !macros_.contains(token.text());
    return !token.is(PREPROCESSOR_SWITCH);
}

bool KeptTokens::settled() {
    if (version_ != macros_.version()) {
        settled_ = 0;
        version_ = macros_.version();
    }
    const auto tokens = tokens_.tokens();
    while (settled_ < tokens.size() && reads_back(tokens[settled_])) ++settled_;
    return settled_ == tokens.size();
}

// A nested conditional is mostly the bulk of its branch, so an outer branch with fewer
// tokens so far goes in front of the inner one instead.
void KeptTokens::take_over(KeptTokens&& inner) {
    const bool was_settled = all_settled();
    if (tokens_.size() < inner.tokens_.size()) {
        inner.tokens_.prepend(std::move(tokens_));
        tokens_ = std::move(inner.tokens_);
    } else {
        tokens_.append(inner.tokens_.tokens());
        inner.tokens_.clear();
    }
    if (was_settled) settled_ = tokens_.size();
}

}  // namespace edd
