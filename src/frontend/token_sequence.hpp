// SPDX-License-Identifier: Apache-2.0
// The tokens the preprocessor holds besides the one in hand: macro bodies, arguments,
// expansions waiting to be read, kept branches. Every holder counts its tokens into one
// tally while it lives, so that what macro expansion holds at once can be bounded.
//
// A TokenBlock is a counted vector. A TokenSequence is a list of spans over blocks it
// shares: a macro body taken whole into other bodies, or expanded many times, is stored
// once, and only the spans (counted like tokens) are copied. Both live in the memory they
// are given, with everything they allocate: a preprocessor gives them memory of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "frontend/token.hpp"

namespace edd {

class TokenBlock {
public:
    TokenBlock(std::size_t& tally, std::pmr::memory_resource* memory) : tokens_(memory), tally_(&tally) {}
    TokenBlock(TokenBlock&& other) noexcept : tokens_(std::move(other.tokens_)), tally_(other.tally_) {
        other.tokens_.clear();
    }
    TokenBlock& operator=(TokenBlock&& other) noexcept;
    ~TokenBlock() { *tally_ -= tokens_.size(); }

    void push_back(const Token& token) {
        tokens_.push_back(token);
        ++*tally_;
    }
    void pop_back() {
        tokens_.pop_back();
        --*tally_;
    }
    void append(std::span<const Token> tokens);
    void reserve(std::size_t size) { tokens_.reserve(size); }
    // Puts `front` before the tokens held; `front` is left empty.
    void prepend(TokenBlock&& front);
    // Drops blank tokens (blanks, line ends, comments) at both ends.
    void trim_blanks();
    void clear();

    std::span<const Token> tokens() const { return tokens_; }
    std::size_t size() const { return tokens_.size(); }
    bool empty() const { return tokens_.empty(); }
    const Token& back() const { return tokens_.back(); }
    std::pmr::memory_resource* memory() const { return tokens_.get_allocator().resource(); }

    // Whether no identifier here named a macro when last asked, for that size and version
    // of the macro table: a block only grows, and the answer is asked again when it did.
    struct MacroCheck {
        std::uint64_t version = ~std::uint64_t{0};
        std::size_t size = 0;
        bool names_no_macro = false;
    };
    mutable MacroCheck macro_check;

private:
    std::pmr::vector<Token> tokens_;
    std::size_t* tally_;
};

class TokenSequence {
public:
    struct Span {
        std::shared_ptr<const TokenBlock> block;
        std::size_t begin;
        std::size_t end;
        std::span<const Token> tokens() const { return block->tokens().subspan(begin, end - begin); }
    };

    TokenSequence(std::size_t& tally, std::pmr::memory_resource* memory) : spans_(memory), tally_(&tally) {}
    // The tokens of one block, shared by nobody else yet, in the block's memory.
    TokenSequence(std::size_t& tally, TokenBlock&& tokens);
    TokenSequence(const TokenSequence&) = delete;
    TokenSequence& operator=(const TokenSequence&) = delete;
    ~TokenSequence() { *tally_ -= spans_.size(); }

    // Appends one token, to a block of the sequence's own.
    void push_back(const Token& token);
    // Appends the tokens of `other`, sharing its blocks.
    void append(const TokenSequence& other);
    void trim_blanks();

    std::span<const Span> spans() const { return spans_; }
    // Where the sequence and the blocks of its own live.
    std::pmr::memory_resource* memory() const { return spans_.get_allocator().resource(); }
    // The number of tokens, each run of blanks one.
    std::size_t size() const;
    bool empty() const { return spans_.empty(); }
    const Token& back() const { return spans_.back().tokens().back(); }
    // The tokens as the expansion budget counts them (a blank run one per character),
    // saturated rather than wrapped.
    std::size_t count() const { return count_; }
    // Whether "#" or "##" is among the tokens.
    bool has_operators() const { return has_operators_; }

private:
    void add_span(Span span);
    void count_in(const Token& token);
    void count_out(const Token& token);

    std::pmr::vector<Span> spans_;
    std::shared_ptr<TokenBlock> own_;  // where push_back puts tokens
    std::size_t* tally_;
    std::size_t count_ = 0;
    bool has_operators_ = false;
};

// The lexers of the preprocessor give a run of blanks as one WHITESPACE token, which saves
// a token per blank. Wherever a number of tokens shows (the expansion budget, "#" of an
// argument), a run counts one per character, as if each blank were a token of its own.
inline std::size_t token_count(const Token& t) {
    return t.is(WHITESPACE) && t.text().size() > 1 ? t.text().size() : 1;
}

// make_shared in `memory`: the object and its share count together.
template <class T, class... Arguments>
std::shared_ptr<T> make_shared_in(std::pmr::memory_resource* memory, Arguments&&... arguments) {
    // Made as a T without const, which not every library strips itself.
    using Made = std::remove_cv_t<T>;
    return std::allocate_shared<Made>(std::pmr::polymorphic_allocator<Made>(memory), std::forward<Arguments>(arguments)...);
}

inline bool is_blank(const Token& t) { return t.is(WHITESPACE) || t.is(NEWLINE) || t.is(COMMENT); }

}  // namespace edd
