// SPDX-License-Identifier: Apache-2.0
// Escaping looks at sixteen bytes at a time, past the end of the text, and in pieces for
// long texts: every place of a special byte, and a text rule change in mid-text, must come
// out as a byte-by-byte escaper would write it, on the short way of leaves too.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "xml/xml_output.hpp"

namespace edd {
namespace {

std::string escaped(std::string_view text, bool attribute) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += attribute ? ">" : "&gt;"; break;
        case '"': out += attribute ? "&quot;" : "\""; break;
        case '\t': out += attribute ? "&#09;" : "\t"; break;
        case '\n': out += attribute ? "&#10;" : "\n"; break;
        case '\r': out += attribute ? "&#13;" : "\r"; break;
        default: out += c;
        }
    }
    return out;
}

std::string written(std::string_view value) {
    std::string document;
    XmlOutput out([&document](std::string_view chunk) { document += chunk; });
    out.open_line("e").attribute("a", value).text(value).close_line("e");
    out.flush();
    return document;
}

TEST(XmlOutput, EscapesEveryPlaceAndLength) {
    for (const char special : std::string_view("&<>\"\t\n\r")) {
        for (std::size_t length = 1; length <= 40; ++length) {
            for (std::size_t place = 0; place < length; ++place) {
                std::string value(length, 'x');
                value[place] = special;
                SCOPED_TRACE(testing::Message() << "length " << length << ", place " << place);
                ASSERT_EQ(written(value), "<e a=\"" + escaped(value, true) + "\">" + escaped(value, false) + "</e>\n");
            }
        }
    }
}

// Leaves take a short way of their own (one piece of room up to a size, the text rule and
// escapes in the middle): they must write what opening, text or attribute, and closing write.
TEST(XmlOutput, LeavesAsOpenedAndClosed) {
    const auto document = [](bool leaf, const std::string& value) {
        std::string text;
        XmlOutput out([&text](std::string_view chunk) { text += chunk; });
        out.open_block("r");
        if (leaf) {
            out.line_text("e", value);
            out.line_empty("e", "a", value);
        } else {
            out.open_line("e").text(value).close_line("e");
            out.open_line("e").attribute("a", value).close_line("e");
        }
        out.close_block("r");
        out.flush();
        return text;
    };
    for (const char special : std::string_view("&<>\"\n\xE9\x01")) {
        for (std::size_t length = 0; length <= 140; ++length) {
            for (const std::size_t place : {std::size_t{0}, length / 2, length - 1}) {
                std::string value(length, 'x');
                if (place < length) value[place] = special;
                SCOPED_TRACE(testing::Message() << "length " << length << ", place " << place);
                ASSERT_EQ(document(true, value), document(false, value));
            }
        }
    }
}

// A start tag's '>' is written at once and taken back by an attribute or an empty
// element's close; where the buffer is handed on just after it, that byte must stay.
TEST(XmlOutput, StartTagEndTakenBackAcrossChunks) {
    std::string document;
    XmlOutput out([&document](std::string_view chunk) { document += chunk; });
    out.open_block("r");
    std::string expected = "<r>";
    for (int i = 0; i < 20000; ++i) {
        const std::string value(static_cast<std::size_t>(i % 7), 'v');
        out.open_line("e").attribute("a", value).close_line("e");
        out.open_line("f").close_line("f");
        expected += "\n    <e a=\"" + value + "\"/>\n    <f/>";
    }
    out.close_block("r");
    out.flush();
    EXPECT_EQ(document, expected + "\n</r>\n");
}

TEST(XmlOutput, LongTextsInPieces) {
    std::string value;
    for (std::size_t i = 0; value.size() < 200000; ++i) value += i % 7 == 0 ? "a<b&c\"d>" : "plain text ";
    EXPECT_EQ(written(value), "<e a=\"" + escaped(value, true) + "\">" + escaped(value, false) + "</e>\n");
}

TEST(XmlOutput, TextRuleFromTheFirstByteItMayChange) {
    const std::string ascii(20, 'a');
    EXPECT_EQ(written(ascii + "<\xE9&"),
              "<e a=\"" + ascii + "&lt;\xC3\xA9&amp;\">" + ascii + "&lt;\xC3\xA9&amp;</e>\n");
    EXPECT_EQ(written(ascii + "\x01\t"),
              "<e a=\"" + ascii + "\xEF\xBF\xBD&#09;\">" + ascii + "\xEF\xBF\xBD\t</e>\n");
}

}  // namespace
}  // namespace edd
