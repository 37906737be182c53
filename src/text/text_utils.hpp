// SPDX-License-Identifier: Apache-2.0
// Small routines on 8-bit strings: EDDL integer literals and paths. The text rule for
// document strings is the writer's (xml/).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace edd {

// The value of an EDDL integer literal (0b101, 017, 42, 0x1F, optional u/l suffixes).
// Digits are not checked against the radix, and the value wraps at 64 bits.
// Throws std::invalid_argument for an empty text or a character that is no digit.
std::uint64_t to_integer(std::string_view text);
// 2, 8, 10 or 16, from the literal's prefix. Throws like to_integer.
int radix_of(std::string_view text);
// The literal without its radix prefix and without up to two u/l suffix letters.
std::string_view digits_of(std::string_view text);

std::string to_text(std::uint64_t value);

// The path up to its last '/' or '\' (exclusive); "./" when it has neither.
std::string directory_of(std::string_view path);

}  // namespace edd
