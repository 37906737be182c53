// Integer literals, paths, escaping, checks and UTF-8 decoding for the writer and the profiles.
#include "text/text_utils.hpp"

#include <charconv>
#include <sstream>
#include <stdexcept>

#include "diagnostics/exceptions.hpp"

namespace edd {

namespace {

constexpr std::string_view empty_text = "str is empty.";
constexpr std::string_view invalid_utf8 = "Not a valid UTF-8 character.";

[[noreturn]] void throw_invalid_digit(char c) {
    throw std::invalid_argument(std::string(1, c) + " is not a valid digit.");
}

std::uint64_t digit_value(char c) {
    if (c >= '0' && c <= '9') return static_cast<std::uint64_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<std::uint64_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<std::uint64_t>(c - 'A' + 10);
    throw_invalid_digit(c);
}

bool is_suffix_letter(char c) { return c == 'u' || c == 'U' || c == 'l' || c == 'L'; }
bool is_radix_letter(char c) { return c == 'b' || c == 'B' || c == 'x' || c == 'X'; }

// Bytes a UTF-8 sequence takes, from its lead byte; 0 for a continuation byte. The 5- and
// 6-byte forms are decoded too, as older encoders wrote them.
int sequence_length(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xC0) return 0;
    if (lead < 0xE0) return 2;
    if (lead < 0xF0) return 3;
    if (lead < 0xF8) return 4;
    if (lead < 0xFC) return 5;
    return 6;
}

}  // namespace

int radix_of(std::string_view text) {
    if (text.empty()) throw std::invalid_argument(std::string(empty_text));
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
    if (text.empty()) throw std::invalid_argument(std::string(empty_text));
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

double to_float(const std::string& text) {
    std::istringstream in(text);
    double value = 0.0;
    in >> value;
    return value;
}

std::string directory_of(std::string_view path) {
    const auto separator = path.find_last_of("/\\");
    if (separator == std::string_view::npos) return "./";
    return std::string(path.substr(0, separator));
}

std::string escape_markup(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&apos;"; break;
        default: out += c;
        }
    }
    return out;
}

void check(bool condition, std::string_view function, std::string_view expression, std::string_view message,
           std::string_view file, int line) {
    if (condition) return;
    std::string text(file);
    text += '(' + std::to_string(line) + ") : ";
    text += function;
    text += " \"";
    text += expression;
    text += "\" failed. (";
    text += message;
    text += ')';
    throw std::logic_error(text);
}

std::u16string decode_utf8(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const auto length = static_cast<std::size_t>(sequence_length(lead));
        if (length == 0 || length > text.size() - i) throw ConversionError(std::string(invalid_utf8));
        std::uint32_t code_point = length == 1 ? lead : lead & (0x7Fu >> length);
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80) throw ConversionError(std::string(invalid_utf8));
            code_point = (code_point << 6) | (next & 0x3Fu);
        }
        // Cut to 16 bits on purpose: the consumers expect one unit per character.
        out.push_back(static_cast<char16_t>(code_point & 0xFFFFu));
        i += length;
    }
    return out;
}

}  // namespace edd
