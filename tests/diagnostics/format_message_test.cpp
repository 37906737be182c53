// SPDX-License-Identifier: Apache-2.0
// Message templates: "%" and a whole run of digits is one placeholder, filled only for the
// first six arguments; an argument's own "%1" is text, never a placeholder again.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

#include "diagnostics/format.hpp"

namespace edd {
namespace {

TEST(FormatMessage, Placeholders) {
    const std::initializer_list<std::string_view> seven = {"a", "b", "c", "d", "e", "f", "g"};
    struct Case {
        std::string_view text;
        std::string_view expected;
    };
    const Case cases[] = {
        {"%0(%1)", "a(b)"},
        {"%5%6", "f"},                   // the seventh argument is never used
        {"[%10]", "[]"},                 // one number, not %1 followed by a 0
        {"[%05]", "[f]"},
        {"[%18446744073709551617]", "[]"},  // 2^64 + 1: a long run does not wrap round to 1
        {"100%", "100%"},
        {"%%0", "%a"},
        {"%x% 1", "%x% 1"},
        {"%", "%"},
        {"", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(format_message(c.text, seven), c.expected);
    }
    EXPECT_EQ(format_message("Unknown argument %0.", {"%1%0"}), "Unknown argument %1%0.");
    EXPECT_EQ(format_message("%0 and %2.", {"one"}), "one and .");  // an argument not given is empty
    EXPECT_EQ(format_message("no arguments %0"), "no arguments ");
}

}  // namespace
}  // namespace edd
