// SPDX-License-Identifier: Apache-2.0
// A set of words, as the grammars accept them: its words in byte order, so that a refusal
// lists them in that order, and a bit per word number, so that a test is one load.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "frontend/keywords.hpp"

namespace edd {

using WordBits = std::array<std::uint64_t, word_number_limit / 64>;

// The words of a set, each of the keyword table; made when the program is compiled.
template <std::size_t N>
struct WordList {
    template <class... Spellings>
    constexpr explicit WordList(Spellings... spellings) : words{std::string_view(spellings)...} {
        for (const std::string_view word : words) {
            const std::uint16_t number = word_number(word);
            if (number == 0) throw "not a word of the keyword table";  // fails to compile
            bits[number / 64] |= std::uint64_t{1} << (number % 64);
        }
    }
    std::array<std::string_view, N> words;
    WordBits bits{};
};
template <class... Spellings>
WordList(Spellings...) -> WordList<sizeof...(Spellings)>;

// A view of a WordList; the empty set by default.
class WordSet {
public:
    constexpr WordSet() = default;
    template <std::size_t N>
    constexpr WordSet(const WordList<N>& list) : words_(list.words), bits_(&list.bits) {}  // NOLINT: a view

    constexpr std::span<const std::string_view> words() const { return words_; }
    constexpr bool empty() const { return words_.empty(); }
    // None, the word of every string literal, is in no set.
    constexpr bool contains(Word word) const {
        return bits_ != nullptr && ((*bits_)[word.number() / 64] >> (word.number() % 64)) & 1;
    }
    constexpr bool operator==(const WordSet& other) const { return bits_ == other.bits_; }

private:
    std::span<const std::string_view> words_;
    const WordBits* bits_ = nullptr;
};

}  // namespace edd
