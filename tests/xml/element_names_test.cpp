// SPDX-License-Identifier: Apache-2.0
// The writer remembers names it found valid by their place, so that a name met again is
// not checked again; a longer text at the same place is another name all the same.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "xml/xml_output.hpp"

namespace edd {
namespace {

TEST(XmlOutput, NameCheckedForItsWholeText) {
    const std::string text = "a b";
    XmlOutput out([](std::string_view) {});
    out.open_block(std::string_view(text).substr(0, 1)).close_block(std::string_view(text).substr(0, 1));
    EXPECT_THROW(out.open_block(std::string_view(text)), std::logic_error);
}

}  // namespace
}  // namespace edd
