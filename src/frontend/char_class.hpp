// SPDX-License-Identifier: Apache-2.0
// Character classes from our own table: the <cctype> functions are undefined for the bytes
// above 0x7F that EDD files may hold, and depend on the locale.
#pragma once

#include <array>
#include <cstdint>

namespace edd::chars {

inline constexpr std::uint8_t DIGIT = 1, IDENT_START = 2, IDENT_PART = 4, OCTAL = 8, HEX = 16,
                              INT_SUFFIX = 32, FLOAT_SUFFIX = 64, BLANK = 128;

inline constexpr auto classes = [] {
    std::array<std::uint8_t, 256> t{};
    for (int c = '0'; c <= '9'; ++c) t[c] = DIGIT | IDENT_PART | HEX;
    for (int c = '0'; c <= '7'; ++c) t[c] |= OCTAL;
    for (int c = 'a'; c <= 'z'; ++c) t[c] = t[c - 'a' + 'A'] = IDENT_START | IDENT_PART;
    for (int c = 'a'; c <= 'f'; ++c) t[c] = t[c - 'a' + 'A'] = IDENT_START | IDENT_PART | HEX;
    t['_'] = IDENT_START | IDENT_PART;
    t['u'] |= INT_SUFFIX;
    t['U'] |= INT_SUFFIX;
    t['l'] |= INT_SUFFIX | FLOAT_SUFFIX;
    t['L'] |= INT_SUFFIX | FLOAT_SUFFIX;
    t['f'] |= FLOAT_SUFFIX;
    t['F'] |= FLOAT_SUFFIX;
    t['\t'] = t['\v'] = t['\r'] = t[' '] = BLANK;  // line feeds are counted where they are read
    return t;
}();

// `c` is a byte value 0..255 or -1 for the end of the input, which is in no class.
constexpr bool is(int c, std::uint8_t cls) { return c >= 0 && c < 256 && (classes[static_cast<std::size_t>(c)] & cls); }

// The same for a byte of the text, with no range test.
constexpr bool is_byte(char c, std::uint8_t cls) { return classes[static_cast<unsigned char>(c)] & cls; }

}  // namespace edd::chars
