// SPDX-License-Identifier: Apache-2.0
// Base64 encoding of arbitrary bytes.
#include "xml/base64.hpp"

#include <cstdint>

namespace edd {

namespace {
constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
}  // namespace

std::string base64(std::string_view bytes) {
    const auto byte = [&](std::size_t i) -> std::uint32_t {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u;
    };
    std::string out;
    out.reserve(4 * ((bytes.size() + 2) / 3));
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::uint32_t group = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
        const std::size_t present = bytes.size() - i;  // a short last group is padded
        out += alphabet[group >> 18];
        out += alphabet[(group >> 12) & 0x3F];
        out += present > 1 ? alphabet[(group >> 6) & 0x3F] : '=';
        out += present > 2 ? alphabet[group & 0x3F] : '=';
    }
    return out;
}

}  // namespace edd
