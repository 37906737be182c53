// SPDX-License-Identifier: Apache-2.0
// Where well-formed UTF-8 ends: the first and last byte of every range a lead byte allows
// for the byte after it, and the bytes just outside. A string off by one there is read as
// Latin-1 and its letters change in the document.
#include <gtest/gtest.h>

#include <string_view>

#include "xml/document_text.hpp"

namespace edd {
namespace {

TEST(DocumentText, WellFormedAtEveryRangeEnd) {
    const std::pair<std::string_view, bool> cases[] = {
        {"\x7F", true},          {"\x80", false},          {"\xBF", false},       // a lone trailing byte
        {"\xC1\xBF", false},     {"\xC2\x80", true},       {"\xDF\xBF", true},    // two bytes
        {"\xC2\x7F", false},     {"\xC2\xC0", false},      {"\xDF", false},
        {"\xE0\x9F\xBF", false}, {"\xE0\xA0\x80", true},   {"\xE1\x80\x80", true},  // three bytes
        {"\xEC\xBF\xBF", true},  {"\xED\x80\x80", true},   {"\xED\x9F\xBF", true},
        {"\xED\xA0\x80", false}, {"\xEE\x80\x80", true},   {"\xEF\xBF\xBF", true},
        {"\xE1\x80\x7F", false}, {"\xE1\x80\xC0", false},  {"\xE1\x80", false},
        {"\xF0\x8F\xBF\xBF", false}, {"\xF0\x90\x80\x80", true}, {"\xF3\xBF\xBF\xBF", true},  // four bytes
        {"\xF4\x8F\xBF\xBF", true},  {"\xF4\x90\x80\x80", false}, {"\xF5\x80\x80\x80", false},
        {"\xF1\x80\x80\x7F", false}, {"\xF1\x80\xC0\x80", false}, {"\xF1\x80\x80", false},
        {"\xF8\x88\x80\x80\x80", false}, {"\xFF", false},
    };
    for (const auto& [bytes, well_formed] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::string(bytes)));
        EXPECT_EQ(is_well_formed_utf8(bytes), well_formed);
        // Between other characters too: a sequence is judged by its own bytes only.
        // (Built with append: GCC 12 warns wrongly about "a" + text.)
        EXPECT_EQ(is_well_formed_utf8(std::string("a").append(bytes).append("\xC3\xA4")), well_formed);
    }
}

}  // namespace
}  // namespace edd
