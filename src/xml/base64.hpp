// SPDX-License-Identifier: Apache-2.0
// Base64 for binary content the writer embeds (images): RFC 4648 alphabet, "=" padding,
// one line without breaks.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace edd {

std::string base64(std::string_view bytes);

// The same text handed to `deliver` in pieces of 64 KiB, so that the encoding of a large
// file is never held whole.
template <class Deliver>
void base64_in_pieces(std::string_view bytes, Deliver&& deliver) {
    constexpr std::size_t piece = 3 * 16384;  // whole groups: only the last one is padded
    for (std::size_t at = 0; at < bytes.size(); at += piece) deliver(base64(bytes.substr(at, piece)));
}

}  // namespace edd
