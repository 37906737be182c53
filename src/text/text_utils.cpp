// SPDX-License-Identifier: Apache-2.0
// Integer literals and paths for the parser, the profiles and the writer.
#include "text/text_utils.hpp"

#include <charconv>
#include <stdexcept>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"

namespace edd {

namespace {

[[noreturn]] void throw_invalid_digit(char c) {
    throw std::invalid_argument(format_message(messages::invalid_digit, {std::string_view(&c, 1)}));
}

std::uint64_t digit_value(char c) {
    if (c >= '0' && c <= '9') return static_cast<std::uint64_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<std::uint64_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<std::uint64_t>(c - 'A' + 10);
    throw_invalid_digit(c);
}

bool is_suffix_letter(char c) { return c == 'u' || c == 'U' || c == 'l' || c == 'L'; }
bool is_radix_letter(char c) { return c == 'b' || c == 'B' || c == 'x' || c == 'X'; }

}  // namespace

int radix_of(std::string_view text) {
    if (text.empty()) throw std::invalid_argument(std::string(messages::empty_number));
    if (text.size() == 1) return 10;
    if (text[0] == '0') {
        if (text[1] == 'b' || text[1] == 'B') return 2;
        if (text[1] == 'x' || text[1] == 'X') return 16;
        return 8;
    }
    if (text[0] >= '1' && text[0] <= '9') return 10;
    throw_invalid_digit(text[0]);
}

std::string_view digits_of(std::string_view text) {
    if (text.empty()) throw std::invalid_argument(std::string(messages::empty_number));
    if (text.size() == 1) return text;
    if (text[0] == '0') {
        text.remove_prefix(1);
        if (is_radix_letter(text[0])) text.remove_prefix(1);
    }
    for (int i = 0; i < 2 && !text.empty() && is_suffix_letter(text.back()); ++i) text.remove_suffix(1);
    return text;
}

std::uint64_t to_integer(std::string_view text) {
    const std::uint64_t radix = static_cast<std::uint64_t>(radix_of(text));
    std::uint64_t value = 0;
    // Horner's rule gives the same sum of digit * radix^position; unsigned arithmetic wraps
    // exactly as the literal's value is defined to.
    for (char c : digits_of(text)) value = value * radix + digit_value(c);
    return value;
}

std::string to_text(std::uint64_t value) {
    char buffer[24];
    const auto result = std::to_chars(std::begin(buffer), std::end(buffer), value);
    return std::string(buffer, result.ptr);
}

std::string directory_of(std::string_view path) {
    const auto separator = path.find_last_of("/\\");
    if (separator == std::string_view::npos) return "./";
    return std::string(path.substr(0, separator));
}

}  // namespace edd
