// SPDX-License-Identifier: Apache-2.0
// A set of words, as the grammars accept them: a view of a constant array sorted in byte
// order, so that a lookup is a binary search and a refusal lists the words in that order.
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

namespace edd {

using WordSet = std::span<const std::string_view>;

// Byte order, as the sets are sorted; most probes differ in the first byte, compared inline.
struct ByteOrder {
    bool operator()(std::string_view a, std::string_view b) const {
        if (!a.empty() && !b.empty() && a.front() != b.front())
            return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front());
        return a < b;
    }
};

// The empty word, which a string literal gives, is in no set.
inline bool contains(WordSet words, std::string_view word) {
    return !word.empty() && std::ranges::binary_search(words, word, ByteOrder{});
}

}  // namespace edd
