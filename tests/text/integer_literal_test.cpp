// SPDX-License-Identifier: Apache-2.0
// EDDL integer literals to numbers: radix from the prefix, digits without prefix and
// suffixes, digits not checked against the radix, values wrapping at 64 bits.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "text/text_utils.hpp"

namespace edd {
namespace {

TEST(IntegerLiteral, Table) {
    struct Case {
        std::string_view text;
        int radix;
        std::string_view digits;
        std::uint64_t value;
    };
    const Case cases[] = {
        {"0", 10, "0", 0},          {"7", 10, "7", 7},          {"0b101", 2, "101", 5},   {"0B11", 2, "11", 3},
        {"0777", 8, "777", 511},    {"0x1F", 16, "1F", 31},     {"0XfF", 16, "fF", 255},  {"0x", 16, "", 0},
        {"255u", 10, "255", 255},   {"10UL", 10, "10", 10},     {"0x10lu", 16, "10", 16}, {"017L", 8, "17", 15},
        {"09", 8, "9", 9},          {"1a", 10, "1a", 20},       {"0b12", 2, "12", 4},
        {"18446744073709551615", 10, "18446744073709551615", 18446744073709551615u},
        {"18446744073709551616", 10, "18446744073709551616", 0},
        {"0x1ffffffffffffffff", 16, "1ffffffffffffffff", 0xffffffffffffffff},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(radix_of(c.text), c.radix);
        EXPECT_EQ(digits_of(c.text), c.digits);
        EXPECT_EQ(to_integer(c.text), c.value);
    }
    const std::pair<std::string_view, std::string_view> failures[] = {
        {"", "str is empty."}, {"x1", "x is not a valid digit."}, {"12g", "g is not a valid digit."},
        {"0x1G", "G is not a valid digit."}, {"1uuu", "u is not a valid digit."},
    };
    for (const auto& [text, message] : failures) {
        try {
            to_integer(text);
            ADD_FAILURE() << text;
        } catch (const std::invalid_argument& e) {
            EXPECT_EQ(e.what(), message);
        }
    }
}

}  // namespace
}  // namespace edd
