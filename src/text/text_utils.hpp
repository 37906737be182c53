// Small routines on 8-bit strings: EDDL integer literals, paths, markup escaping, internal
// checks and UTF-8 decoding. The text rule for document strings is the writer's (xml/).
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
// Reads a leading number as a stream would; 0.0 when there is none.
double to_float(const std::string& text);

// The path up to its last '/' or '\' (exclusive); "./" when it has neither.
std::string directory_of(std::string_view path);

// Replaces & < > " ' by their predefined entities.
std::string escape_markup(std::string_view text);

// Throws std::logic_error "file(line) : function "expression" failed. (message)" unless
// the condition holds.
void check(bool condition, std::string_view function, std::string_view expression, std::string_view message,
           std::string_view file, int line);

// One UTF-16 unit per sequence, the code point cut to 16 bits (no surrogate pairs).
// Throws ConversionError for a continuation byte in lead position, a sequence cut short
// by the end of the text or a sequence whose trailing bytes are not continuation bytes.
std::u16string decode_utf8(std::string_view text);

}  // namespace edd
