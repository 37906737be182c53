// SPDX-License-Identifier: Apache-2.0
#include "frontend/punctuators.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace edd {

namespace {

// For every first byte, the punctuators that start with it, longest first (the table's order).
struct Candidates {
    std::array<std::uint8_t, 4> at{};
    std::uint8_t count = 0;
};
constexpr auto by_first_byte = [] {
    std::array<Candidates, 256> table{};
    for (std::size_t i = 0; i < std::size(punctuators); ++i) {
        Candidates& entry = table[static_cast<unsigned char>(punctuators[i].spelling[0])];
        entry.at[entry.count++] = static_cast<std::uint8_t>(i);
    }
    return table;
}();

// Spellings are at most three bytes: a byte loop costs less than a call to compare them.
constexpr bool begins_with(std::string_view text, std::string_view spelling) {
    if (spelling.size() > text.size()) return false;
    for (std::size_t i = 1; i < spelling.size(); ++i)  // the first byte chose the candidates
        if (text[i] != spelling[i]) return false;
    return true;
}

}  // namespace

std::optional<Punctuator> match_punctuator(std::string_view text) {
    if (text.empty()) return std::nullopt;
    const Candidates& candidates = by_first_byte[static_cast<unsigned char>(text[0])];
    for (std::size_t i = 0; i < candidates.count; ++i)
        if (begins_with(text, punctuators[candidates.at[i]].spelling)) return punctuators[candidates.at[i]];
    return std::nullopt;
}

}  // namespace edd
