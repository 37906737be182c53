// SPDX-License-Identifier: Apache-2.0
// The dictionary keys method code uses: an identifier after "[" unless an identifier stands
// before the bracket (that is indexing), and the argument of get_dictionary_string(...).
#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "frontend/lexer.hpp"
#include "model/code_value.hpp"

namespace edd {
namespace {

// The keys of code as the parser keeps it: its tokens without blanks and comments.
std::string keys_of(std::string code) {
    std::ostringstream diag;
    Diagnostics sink(diag, diag);
    Lexer lexer = Lexer::from_text(std::move(code), "code", sink);
    std::vector<CodeToken> tokens;
    for (Token t = lexer.next_token(); !t.is(END_OF_FILE); t = lexer.next_token()) {
        if (t.is(WHITESPACE) || t.is(NEWLINE) || t.is(COMMENT)) continue;
        tokens.push_back({t.kind(), static_cast<std::uint32_t>(t.text().size()), t.text().data()});
    }
    KeySet keys{"earlier"};
    Arena arena;
    arena.make<CodeValue>(std::span<const CodeToken>(tokens))->collect_dictionary_keys(keys);
    std::string out;
    for (const std::string& key : keys) out += key + ' ';
    return out;
}

TEST(MethodCodeKeys, Table) {
    const std::pair<const char*, const char*> cases[] = {
        {"s = [label];", "earlier label "},
        {"[first] x", "earlier first "},
        {"arr[idx] = 1; a.b[k]; arr [i]", "earlier "},
        {"f()[k]; x = ([p]);", "earlier k p "},
        {"get_dictionary_string(my_key, s, 40);", "earlier my_key "},
        {"get_dictionary_string (k2) /* c */", "earlier k2 "},
        {"x = get_dictionary_string; (k); get_dictionary_string(\"s\")", "earlier "},
        {"get_dictionary_string(get_dictionary_string(k))", "earlier get_dictionary_string k "},
        {"s = \"[not_a_key]\"; [ 1 ]", "earlier "},
    };
    for (const auto& [code, keys] : cases) EXPECT_EQ(keys_of(code), keys) << code;
}

// The value keeps its own copy of every text, in one block: nothing of the source is read
// once it is gone, and an empty text (the string "") stays empty between its neighbours.
TEST(MethodCode, TextsOutliveTheirSource) {
    std::string source = "[k] x \"\" long_name_of_more_than_thirty_two_bytes_0123";
    const auto piece = [&](std::uint32_t kind, std::size_t at, std::size_t size) {
        return CodeToken{kind, static_cast<std::uint32_t>(size), source.data() + at};
    };
    const CodeToken tokens[] = {piece(LEFT_SQUARE_BRACKET, 0, 1), piece(IDENTIFIER, 1, 1),
                                piece(RIGHT_SQUARE_BRACKET, 2, 1), piece(IDENTIFIER, 4, 1),
                                piece(STRING, 7, 0), piece(IDENTIFIER, 9, 44)};
    Arena arena;
    const CodeValue* code = arena.make<CodeValue>(std::span<const CodeToken>(tokens));
    const ValuePtr copy = code->clone(arena);
    source.assign(source.size(), '#');
    EXPECT_EQ(code->to_string(), "[ k ] x \"\" long_name_of_more_than_thirty_two_bytes_0123 ");
    EXPECT_EQ(copy->to_string(), code->to_string());
    EXPECT_TRUE(copy->has_keys());
}

}  // namespace
}  // namespace edd
