// Integer literals, digit errors, paths, escaping, checks and UTF-8 decoding.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "diagnostics/exceptions.hpp"
#include "xml/text_utils.hpp"

namespace edd {
namespace {

// The message of the exception `call` throws, or "" when it does not throw that type.
template <class Exception, class Call>
std::string message_of(Call call) {
    try {
        call();
    } catch (const Exception& e) {
        return e.what();
    }
    return "";
}

TEST(IntegerLiteral, ValueInEveryRadix) {
    struct Case {
        std::string_view text;
        int radix;
        std::string_view digits;
        std::uint64_t value;
    };
    const Case cases[] = {
        {"0", 10, "0", 0},
        {"7", 10, "7", 7},
        {"0b101", 2, "101", 5},
        {"0B11", 2, "11", 3},
        {"0777", 8, "777", 511},
        {"0x1F", 16, "1F", 31},
        {"0XfF", 16, "fF", 255},
        {"0x", 16, "", 0},
        {"255u", 10, "255", 255},
        {"10UL", 10, "10", 10},
        {"0x10lu", 16, "10", 16},
        {"017L", 8, "17", 15},
        {"18446744073709551615", 10, "18446744073709551615", 18446744073709551615u},
        // Digits are not checked against the radix.
        {"09", 8, "9", 9},
        {"1a", 10, "1a", 20},
        {"0b12", 2, "12", 4},
        // The value wraps at 64 bits.
        {"18446744073709551616", 10, "18446744073709551616", 0},
        {"0x1ffffffffffffffff", 16, "1ffffffffffffffff", 0xffffffffffffffff},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(radix_of(c.text), c.radix);
        EXPECT_EQ(digits_of(c.text), c.digits);
        EXPECT_EQ(to_integer(c.text), c.value);
    }
}

TEST(IntegerLiteral, BadTextsThrowWithTheirMessage) {
    struct Case {
        std::string_view text;
        std::string_view message;
    };
    const Case cases[] = {
        {"", "str is empty."},
        {"x1", "x is not a valid digit."},
        {"-1", "- is not a valid digit."},
        {"12g", "g is not a valid digit."},
        {"0x1G", "G is not a valid digit."},
        {"u", "u is not a valid digit."},
        {"1uuu", "u is not a valid digit."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(message_of<std::invalid_argument>([&] { to_integer(c.text); }), c.message);
    }
    EXPECT_EQ(message_of<std::invalid_argument>([] { radix_of("z0"); }), "z is not a valid digit.");
    EXPECT_EQ(message_of<std::invalid_argument>([] { digits_of(""); }), "str is empty.");
}

TEST(TextUtils, NumbersToAndFromText) {
    EXPECT_EQ(to_text(0), "0");
    EXPECT_EQ(to_text(18446744073709551615u), "18446744073709551615");
    EXPECT_DOUBLE_EQ(to_float("2.5e3 rest"), 2500.0);
    EXPECT_DOUBLE_EQ(to_float("-0.25"), -0.25);
    EXPECT_DOUBLE_EQ(to_float("abc"), 0.0);
    EXPECT_DOUBLE_EQ(to_float(""), 0.0);
}

TEST(TextUtils, DirectoryOf) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"dir/sub/file.ddl", "dir/sub"}, {"file.ddl", "./"}, {"/", ""},
        {"a\\b", "a"},                   {"a/b\\c", "a/b"},  {"", "./"},
    };
    for (const auto& [path, directory] : cases) {
        SCOPED_TRACE(path);
        EXPECT_EQ(directory_of(path), directory);
    }
}

TEST(TextUtils, EscapeMarkupReplacesTheFiveCharacters) {
    EXPECT_EQ(escape_markup("a<b> & \"c\" 'd'"), "a&lt;b&gt; &amp; &quot;c&quot; &apos;d&apos;");
    EXPECT_EQ(escape_markup("&amp;"), "&amp;amp;");
    EXPECT_EQ(escape_markup(""), "");
}

TEST(TextUtils, CheckThrowsWithPositionAndExpression) {
    EXPECT_NO_THROW(check(true, "f", "x", "m", "file.cpp", 1));
    EXPECT_EQ(message_of<std::logic_error>([] { check(false, "write", "node != null", "no node", "w.cpp", 42); }),
              "w.cpp(42) : write \"node != null\" failed. (no node)");
}

TEST(TextUtils, FileExistsOnlyForReadableFiles) {
    EXPECT_TRUE(file_exists(__FILE__));
    EXPECT_FALSE(file_exists(std::string(__FILE__) + ".missing"));
    EXPECT_FALSE(file_exists(directory_of(__FILE__)));
}

TEST(TextUtils, DecodeUtf8GivesOneUnitPerSequence) {
    const std::pair<std::string_view, std::u16string> cases[] = {
        {"", u""},
        {"abc", u"abc"},
        {"\xC3\xA4", u"\u00E4"},
        {"\xE2\x82\xAC!", u"\u20AC!"},
        // Above U+FFFF the code point is cut to 16 bits, not split into a surrogate pair.
        {"\xF0\x9F\x98\x80", u"\uF600"},
        {"\xF8\x88\x80\x80\x80", std::u16string(1, u'\0')},  // U+200000, a five-byte form
    };
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(decode_utf8(text), expected);
    }
}

TEST(TextUtils, DecodeUtf8RejectsMalformedText) {
    const std::string_view cases[] = {
        "\x80", "a\xBF", "\xC3", "ab\xE2\x82", "\xF0\x9F\x98", "\xC3\x41", "\xE2\x82\x41",
    };
    for (const auto text : cases) {
        SCOPED_TRACE(testing::PrintToString(std::string(text)));
        EXPECT_EQ(message_of<ConversionError>([&] { decode_utf8(text); }), "Not a valid UTF-8 character.");
    }
}

}  // namespace
}  // namespace edd
