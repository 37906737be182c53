// Document text: UTF-8 kept, anything else read as Latin-1, unusable characters replaced;
// and base64.
#include <gtest/gtest.h>

#include <string>

#include "xml/base64.hpp"
#include "xml/document_text.hpp"

namespace edd {
namespace {

TEST(DocumentText, KeepsUtf8AndReadsAnythingElseAsLatin1) {
    struct Case {
        std::string_view name;
        std::string_view bytes;
        std::string_view expected;
    };
    const Case cases[] = {
        {"empty", "", ""},
        {"ascii", "Flow <rate> & more", "Flow <rate> & more"},
        {"tab lf cr kept", "a\tb\nc\rd", "a\tb\nc\rd"},
        {"utf-8 kept", "M\xC3\xBC\x6Cler \xE2\x82\xAC \xF0\x9F\x98\x80", "M\xC3\xBC\x6Cler \xE2\x82\xAC \xF0\x9F\x98\x80"},
        {"highest code point kept", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
        {"latin-1", "M\xFCller \xB0" "C", "M\xC3\xBCller \xC2\xB0" "C"},
        {"c1 control from latin-1", "\x85", "\xC2\x85"},
        // One bad sequence makes the whole string Latin-1, its valid UTF-8 included.
        {"mixed", "\xC3\xA4 \xE4", "\xC3\x83\xC2\xA4 \xC3\xA4"},
        {"truncated at end", "ab\xE2\x82", "ab\xC3\xA2\xC2\x82"},
        {"overlong", "\xC0\xAF", "\xC3\x80\xC2\xAF"},
        {"overlong three-byte", "\xE0\x80\xAF", "\xC3\xA0\xC2\x80\xC2\xAF"},
        {"surrogate", "\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xC2\x80"},
        {"above U+10FFFF", "\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xC2\x80\xC2\x80"},
        {"five-byte form", "\xF8\x88\x80\x80\x80", "\xC3\xB8\xC2\x88\xC2\x80\xC2\x80\xC2\x80"},
        // Characters XML 1.0 cannot carry become U+FFFD, whichever way the text was read.
        {"controls", std::string_view("a\x01\x1F\0b", 5), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD" "b"},
        {"control in latin-1", "\x0B\xE9", "\xEF\xBF\xBD\xC3\xA9"},
        {"non-characters", "\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xBF\xBD", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(to_document_text(c.bytes), c.expected);
    }
}

TEST(Base64, EncodesWithPadding) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"\xFB\xFF\xBF", "+/+/"},
        {std::string_view("\0\0", 2), "AAA="},
    };
    for (const auto& [bytes, expected] : cases) {
        SCOPED_TRACE(expected);
        EXPECT_EQ(base64(bytes), expected);
    }
}

}  // namespace
}  // namespace edd
