// SPDX-License-Identifier: Apache-2.0
// Classifies a model string as UTF-8 or Latin-1 and cleans it for an XML 1.0 document.
#include "xml/document_text.hpp"

namespace edd {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";  // U+FFFD

bool in_range(unsigned char byte, unsigned char low, unsigned char high) { return byte >= low && byte <= high; }

// Bytes of the well-formed sequence starting at `at`, or 0 when there is none. The second
// byte's range depends on the lead: that is where overlongs, surrogates and code points
// above U+10FFFF are excluded.
std::size_t well_formed_length(std::string_view bytes, std::size_t at) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(bytes[at + k]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return 1;
    std::size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (in_range(lead, 0xC2, 0xDF)) {
        length = 2;
    } else if (in_range(lead, 0xE0, 0xEF)) {
        length = 3;
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
    } else if (in_range(lead, 0xF0, 0xF4)) {
        length = 4;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    } else {
        return 0;
    }
    if (length > bytes.size() - at || !in_range(byte(1), low, high)) return 0;
    for (std::size_t k = 2; k < length; ++k) {
        if (!in_range(byte(k), 0x80, 0xBF)) return 0;
    }
    return length;
}

bool is_forbidden_control(unsigned char byte) { return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r'; }

// U+FFFE and U+FFFF: the only non-characters below U+10FFFF that XML 1.0 excludes.
bool is_forbidden_sequence(std::string_view sequence) {
    return sequence == "\xEF\xBF\xBE" || sequence == "\xEF\xBF\xBF";
}

// Plain runs are copied in one call; only the characters to replace are looked at one by one.
std::string clean_utf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    std::size_t run = 0;
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = well_formed_length(bytes, i);
        const std::string_view sequence = bytes.substr(i, length);
        if ((length == 1 && is_forbidden_control(static_cast<unsigned char>(sequence[0]))) ||
            is_forbidden_sequence(sequence)) {
            out.append(bytes.substr(run, i - run));
            out += replacement;
            run = i + length;
        }
        i += length;
    }
    out.append(bytes.substr(run));
    return out;
}

std::string latin1_to_utf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() * 2);
    for (char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (is_forbidden_control(byte)) {
            out += replacement;
        } else if (byte < 0x80) {
            out += c;
        } else {
            out += static_cast<char>(0xC0 | (byte >> 6));
            out += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return out;
}

}  // namespace

bool is_well_formed_utf8(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = well_formed_length(bytes, i);
        if (length == 0) return false;
        i += length;
    }
    return true;
}

bool is_plain_document_text(std::string_view bytes) {
    for (char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 || is_forbidden_control(byte)) return false;
    }
    return true;
}

std::string to_document_text(std::string_view bytes) {
    if (is_plain_document_text(bytes)) return std::string(bytes);
    return is_well_formed_utf8(bytes) ? clean_utf8(bytes) : latin1_to_utf8(bytes);
}

}  // namespace edd
