// SPDX-License-Identifier: Apache-2.0
// The text rule for every string the document carries: well-formed UTF-8 is kept, anything
// else is read as Latin-1, and characters XML cannot carry become U+FFFD.
#include <gtest/gtest.h>

#include <string_view>

#include "xml/document_text.hpp"

namespace edd {
namespace {

TEST(DocumentText, Table) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""},
        {"Flow <rate> & more", "Flow <rate> & more"},
        {"a\tb\nc\rd", "a\tb\nc\rd"},
        {"M\xC3\xBC\x6Cler \xE2\x82\xAC \xF0\x9F\x98\x80", "M\xC3\xBC\x6Cler \xE2\x82\xAC \xF0\x9F\x98\x80"},
        {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},  // the highest code point
        {"M\xFCller \xB0" "C", "M\xC3\xBCller \xC2\xB0" "C"},
        {"\x85", "\xC2\x85"},  // 0x80-0x9F are Latin-1 controls, not Windows-1252 letters
        // One bad sequence makes the whole string Latin-1, its valid UTF-8 included.
        {"\xC3\xA4 \xE4", "\xC3\x83\xC2\xA4 \xC3\xA4"},
        {"ab\xE2\x82", "ab\xC3\xA2\xC2\x82"},                              // cut short
        {"\xC0\xAF", "\xC3\x80\xC2\xAF"},                                  // overlong
        {"\xE0\x80\xAF", "\xC3\xA0\xC2\x80\xC2\xAF"},                      // overlong
        {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xC2\x80"},                      // a surrogate
        {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xC2\x80\xC2\x80"},          // above U+10FFFF
        {"\xF8\x88\x80\x80\x80", "\xC3\xB8\xC2\x88\xC2\x80\xC2\x80\xC2\x80"},  // a five-byte form
        // Characters XML 1.0 cannot carry, whichever way the text was read.
        {std::string_view("a\x01\x1F\0b", 5), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD" "b"},
        {"\x0B\xE9", "\xEF\xBF\xBD\xC3\xA9"},
        {"\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xBF\xBD", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
    };
    for (const auto& [bytes, expected] : cases) EXPECT_EQ(to_document_text(bytes), expected) << bytes;
}

}  // namespace
}  // namespace edd
