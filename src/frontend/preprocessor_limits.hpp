// SPDX-License-Identifier: Apache-2.0
// The bounds that keep hostile input from costing more than time and memory linear in it,
// and the counts they are checked against. Every part of the preprocessor charges this one
// object; real descriptions stay far below every figure.
#pragma once

#include <cstddef>

namespace edd {

class PreprocessorLimits {
public:
    static constexpr std::size_t max_include_depth = 200;
    // Macro expansion produces at most max_expansion_tokens in all, plus the allowance for
    // every token read from a file.
    static constexpr std::size_t max_expansion_tokens = std::size_t{1} << 18;
    static constexpr std::size_t expansion_tokens_per_source_token = 64;
    // The tokens held at once in macro bodies, arguments, expansions waiting to be read and
    // kept branches (a shared body counts once).
    static constexpr std::size_t max_held_tokens = std::size_t{1} << 20;
    static constexpr std::size_t held_tokens_per_source_token = 4;
    // The bytes of the texts expansion makes (pasted and stringified tokens), which stay to
    // the end of the run.
    static constexpr std::size_t max_made_bytes = std::size_t{1} << 24;
    static constexpr std::size_t made_bytes_per_source_token = 64;
    // Open conditionals and macro calls inside arguments, together.
    static constexpr std::size_t max_nesting = 256;

    // Tokens read from a file; a run of blanks counts one per character. Charged for every
    // token read, so kept to one addition: the expansion budget follows from this count.
    void read_from_source(std::size_t tokens) { source_tokens_ += tokens; }
    bool affords(std::size_t produced) const { return produced <= expansion_budget(); }
    // Takes tokens produced by expansion from the budget. False when they exceed what is
    // left, which is then used up: work that failed was done all the same, and a body that
    // fails at every use must not cost its size again each time.
    bool charge(std::size_t produced) {
        if (produced > expansion_budget()) {
            expansion_spent_ += expansion_budget();
            return false;
        }
        expansion_spent_ += produced;
        return true;
    }
    // False when the texts made so far, with this one, exceed their bound.
    bool charge_text(std::size_t bytes) {
        made_bytes_ += bytes;
        return made_bytes_ <= max_made_bytes + made_bytes_per_source_token * source_tokens_;
    }
    // With `more` tokens held besides.
    bool holds_too_much(std::size_t more = 0) const {
        return held_tokens_ + more > max_held_tokens + held_tokens_per_source_token * source_tokens_;
    }
    // The tally every holder of tokens counts into while it lives.
    std::size_t& held_tokens() { return held_tokens_; }

    // One level deeper; false at the limit.
    bool enter_level() {
        if (nesting_ >= max_nesting) return false;
        ++nesting_;
        return true;
    }
    void leave_level() { --nesting_; }
    // The nesting limit is reported once; the levels beyond it fail without a word.
    bool first_time_too_deep() {
        const bool first = !too_deep_reported_;
        too_deep_reported_ = true;
        return first;
    }

private:
    std::size_t expansion_budget() const {
        return max_expansion_tokens + expansion_tokens_per_source_token * source_tokens_ - expansion_spent_;
    }

    std::size_t held_tokens_ = 0;
    std::size_t source_tokens_ = 0;
    std::size_t expansion_spent_ = 0;
    std::size_t made_bytes_ = 0;
    std::size_t nesting_ = 0;
    bool too_deep_reported_ = false;
};

}  // namespace edd
