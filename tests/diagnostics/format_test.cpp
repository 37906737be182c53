// Template formatting: placeholders, dropped numbers, stray percent signs.
#include <gtest/gtest.h>

#include "diagnostics/format.hpp"

namespace edd {
namespace {

TEST(FormatMessage, FillsPlaceholdersAndDropsUnknownNumbers) {
    struct Case {
        std::string_view text;
        std::string_view expected;
    };
    const Case cases[] = {
        {"Stray %0", "Stray ;"},
        {"%0 is not allowed on object of type %1 in %2.", "; is not allowed on object of type b in c."},
        {"no placeholder", "no placeholder"},
        {"%7 dropped", " dropped"},
        {"%12 read as one number", " read as one number"},
        {"%05 is five", "f is five"},
        {"%99999999999999999999 huge", " huge"},
        {"50% off, 100%", "50% off, 100%"},
        {"%% and %x", "%% and %x"},
        {"%0%1%0", ";b;"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(format_message(c.text, {";", "b", "c", "d", "e", "f"}), c.expected);
    }
}

TEST(FormatMessage, ArgumentNotSuppliedIsEmpty) {
    EXPECT_EQ(format_message("Expected NUMBER_OF_POINTS, X_VALUES or Y_VALUES but got %1.", {"x"}),
              "Expected NUMBER_OF_POINTS, X_VALUES or Y_VALUES but got .");
    EXPECT_EQ(format_message("%0 and %5", {}), " and ");
}

}  // namespace
}  // namespace edd
