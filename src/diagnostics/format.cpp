// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/format.hpp"

#include <cstddef>

namespace edd {

namespace {
constexpr std::size_t max_arguments = 6;
bool is_digit(char c) { return c >= '0' && c <= '9'; }
}  // namespace

std::string format_message(std::string_view text, std::initializer_list<std::string_view> args) {
    std::string out;
    out.reserve(text.size() + 32);
    std::size_t i = 0;
    while (i < text.size()) {
        if (text[i] != '%' || i + 1 >= text.size() || !is_digit(text[i + 1])) {
            out += text[i++];
            continue;
        }
        ++i;
        // The whole digit run is one number; saturate so that long runs cannot overflow.
        std::size_t n = 0;
        while (i < text.size() && is_digit(text[i])) {
            if (n < max_arguments) n = n * 10 + static_cast<std::size_t>(text[i] - '0');
            ++i;
        }
        if (n < max_arguments && n < args.size()) out += *(args.begin() + n);
    }
    return out;
}

std::string concat(std::initializer_list<std::string_view> pieces) {
    std::size_t size = 0;
    for (std::string_view piece : pieces) size += piece.size();
    std::string out;
    out.reserve(size);
    for (std::string_view piece : pieces) out += piece;
    return out;
}

}  // namespace edd
