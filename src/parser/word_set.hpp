// A set of words, as the grammars accept them: a view of a constant array sorted in byte
// order, so that a lookup is a binary search and a refusal lists the words in that order.
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

namespace edd {

using WordSet = std::span<const std::string_view>;

inline bool contains(WordSet words, std::string_view word) { return std::ranges::binary_search(words, word); }

}  // namespace edd
