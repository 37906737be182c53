// SPDX-License-Identifier: Apache-2.0
// Base64 of image bytes: the standard vectors, every byte value (bytes above 0x7F must not
// carry a sign into the groups), and the pieces a large image is delivered in joined to the
// one text, whatever the size around a piece's end: only the last piece may be padded.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "xml/base64.hpp"

namespace edd {
namespace {

TEST(Base64, VectorsBytesAndPieces) {
    const std::pair<std::string_view, std::string_view> vectors[] = {
        {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"}, {"\xff\xfe\x80", "//6A"}, {"\x89PNG", "iVBORw=="},
    };
    for (const auto& [bytes, text] : vectors) EXPECT_EQ(base64(bytes), text) << text;

    std::string every_byte;
    for (int i = 0; i < 256; ++i) every_byte += static_cast<char>(i);
    const std::string encoded = base64(every_byte);
    EXPECT_EQ(encoded.substr(0, 8), "AAECAwQF");
    EXPECT_EQ(encoded.substr(encoded.size() - 8), "/P3+/w==");

    constexpr std::size_t piece = 3 * 16384;
    for (const std::size_t size : {piece - 1, piece, piece + 1, 2 * piece + 2}) {
        SCOPED_TRACE(size);
        std::string bytes(size, '\0');
        for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
        std::string joined;
        std::size_t pieces = 0;
        base64_in_pieces(bytes, [&](const std::string& text) {
            joined += text;
            ++pieces;
        });
        EXPECT_EQ(joined, base64(bytes));
        EXPECT_EQ(pieces, (size + piece - 1) / piece);
    }
}

}  // namespace
}  // namespace edd
