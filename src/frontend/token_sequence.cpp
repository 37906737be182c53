// SPDX-License-Identifier: Apache-2.0
#include "frontend/token_sequence.hpp"

#include <algorithm>
#include <limits>

namespace edd {

namespace {

std::size_t saturated_sum(std::size_t a, std::size_t b) {
    return a > std::numeric_limits<std::size_t>::max() - b ? std::numeric_limits<std::size_t>::max() : a + b;
}

bool is_operator(const Token& t) { return t.is(PREPROCESSOR_SWITCH) || t.is(PREPROCESSOR_PASTE); }

}  // namespace

// ---- TokenBlock ---------------------------------------------------------------------------

TokenBlock& TokenBlock::operator=(TokenBlock&& other) noexcept {
    if (this != &other) {
        *tally_ -= tokens_.size();
        tokens_ = std::move(other.tokens_);
        other.tokens_.clear();
        *tally_ += tokens_.size();
        *other.tally_ -= tokens_.size();
    }
    return *this;
}

void TokenBlock::append(std::span<const Token> tokens) {
    tokens_.insert(tokens_.end(), tokens.begin(), tokens.end());
    *tally_ += tokens.size();
}

void TokenBlock::prepend(TokenBlock&& front) {
    tokens_.insert(tokens_.begin(), front.tokens_.begin(), front.tokens_.end());
    *tally_ += front.tokens_.size();
    front.clear();
}

void TokenBlock::trim_blanks() {
    const std::size_t before = tokens_.size();
    while (!tokens_.empty() && is_blank(tokens_.back())) tokens_.pop_back();
    auto first = std::ranges::find_if_not(tokens_, is_blank);
    tokens_.erase(tokens_.begin(), first);
    *tally_ -= before - tokens_.size();
}

void TokenBlock::clear() {
    *tally_ -= tokens_.size();
    tokens_.clear();
}

// ---- TokenSequence ------------------------------------------------------------------------

TokenSequence::TokenSequence(std::size_t& tally, TokenBlock&& tokens) : spans_(tokens.memory()), tally_(&tally) {
    if (tokens.empty()) return;
    // One block holds no more tokens than memory does, so its count cannot overflow.
    std::size_t count = 0;
    bool operators = false;
    for (const Token& token : tokens.tokens()) {
        count += token_count(token);
        operators = operators || is_operator(token);
    }
    count_ = count;
    has_operators_ = operators;
    const std::size_t size = tokens.size();
    add_span({make_shared_in<const TokenBlock>(memory(), std::move(tokens)), 0, size});
}

void TokenSequence::push_back(const Token& token) {
    if (own_ == nullptr) own_ = make_shared_in<TokenBlock>(memory(), *tally_, memory());
    own_->push_back(token);
    count_in(token);
    const std::size_t at = own_->size() - 1;
    if (!spans_.empty() && spans_.back().block == own_ && spans_.back().end == at) {
        ++spans_.back().end;
    } else {
        add_span({own_, at, at + 1});
    }
}

void TokenSequence::append(const TokenSequence& other) {
    spans_.reserve(spans_.size() + other.spans_.size());
    for (const Span& span : other.spans_) add_span(span);
    count_ = saturated_sum(count_, other.count_);
    has_operators_ = has_operators_ || other.has_operators_;
}

std::size_t TokenSequence::size() const {
    std::size_t size = 0;
    for (const Span& span : spans_) size += span.end - span.begin;
    return size;
}

void TokenSequence::add_span(Span span) {
    spans_.push_back(std::move(span));
    ++*tally_;
}

// Narrows the outer spans; the blocks, which others may share, stay as they are.
void TokenSequence::trim_blanks() {
    while (!spans_.empty()) {
        Span& first = spans_.front();
        while (first.begin != first.end && is_blank(first.block->tokens()[first.begin])) {
            count_out(first.block->tokens()[first.begin]);
            ++first.begin;
        }
        if (first.begin != first.end) break;
        spans_.erase(spans_.begin());
        --*tally_;
    }
    while (!spans_.empty()) {
        Span& last = spans_.back();
        while (last.begin != last.end && is_blank(last.block->tokens()[last.end - 1])) {
            count_out(last.block->tokens()[last.end - 1]);
            --last.end;
        }
        if (last.begin != last.end) break;
        spans_.pop_back();
        --*tally_;
    }
}

void TokenSequence::count_in(const Token& token) {
    count_ = saturated_sum(count_, token_count(token));
    has_operators_ = has_operators_ || is_operator(token);
}

void TokenSequence::count_out(const Token& token) {
    // Blanks only: a saturated count stays saturated.
    if (count_ != std::numeric_limits<std::size_t>::max()) count_ -= token_count(token);
}

}  // namespace edd
