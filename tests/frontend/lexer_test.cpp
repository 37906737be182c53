// SPDX-License-Identifier: Apache-2.0
// The lexer as one table: input -> every token with its kind, text and line, and what it
// reports. Tokens print as messages print them, KIND(text) or number(text) for a kind
// without a name; "N:" marks the first token on a new line N.
#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>

#include "frontend/lexer.hpp"

namespace edd {
namespace {

using namespace std::string_view_literals;

std::string escaped(std::string_view text) {
    std::string out;
    for (const unsigned char c : text) {
        if (c == '\n') out += "\\n";
        else if (c == '\r') out += "\\r";
        else if (c == '\t') out += "\\t";
        else if (c >= 0x20 && c < 0x7F) out += static_cast<char>(c);
        else {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\x%02X", c);
            out += hex;
        }
    }
    return out;
}

// Every token up to END_OF_FILE, which must then repeat with the same line.
std::string lex(std::string_view text, bool blank_runs, std::string& diagnostics) {
    std::ostringstream diag;
    Diagnostics sink(diag, diag);
    Lexer lexer = Lexer::from_text(std::string(text), "name.ddl", sink);
    lexer.set_blank_runs(blank_runs);
    std::string out;
    int line = 1;
    for (int i = 0; i < 1000; ++i) {
        const Token t = lexer.next_token();
        if (!out.empty()) out += ' ';
        if (t.line() != line) out += std::to_string(line = t.line()) + ':';
        EXPECT_EQ(t.file_name(), "name.ddl");
        if (t.is(END_OF_FILE)) {
            const Token again = lexer.next_token();
            EXPECT_TRUE(again.is(END_OF_FILE) && again.line() == line && again.text().empty());
            diagnostics = diag.str();
            return out + to_string(t);
        }
        out += escaped(to_string(t));
    }
    return out + " (no end)";
}

struct Case {
    std::string_view input;
    std::string_view tokens;
    std::string_view diagnostics = "";
};

const Case cases[] = {
    // Blanks and line ends: one token per blank character; CR alone ends no line.
    {"a\r\nb", "IDENTIFIER(a) WHITESPACE(\\r) NEWLINE(\\n) 2:IDENTIFIER(b) END_OF_FILE()"},
    {"\t\v  x\n\n", "WHITESPACE(\\t) WHITESPACE(\\x0B) WHITESPACE( ) WHITESPACE( ) IDENTIFIER(x) NEWLINE(\\n) "
                    "2:NEWLINE(\\n) 3:END_OF_FILE()"},
    {"a\rb\f", "IDENTIFIER(a) WHITESPACE(\\r) IDENTIFIER(b) UNDEFINED(\\x0C) END_OF_FILE()"},
    {"", "END_OF_FILE()"},
    // A byte-order mark at the start: each of its bytes, in order, is dropped.
    {"\xEF\xBB\xBF" "a", "IDENTIFIER(a) END_OF_FILE()"},
    {"\xBB\xBF" "a", "IDENTIFIER(a) END_OF_FILE()"},
    {"\xEF\xBF" "a", "IDENTIFIER(a) END_OF_FILE()"},
    {"\xBF\xBB" "a", "UNDEFINED(\\xBB) IDENTIFIER(a) END_OF_FILE()"},
    {"\xEF\xBB\xBF\xEF" "a", "UNDEFINED(\\xEF) IDENTIFIER(a) END_OF_FILE()"},
    {"a\xEF\xBB\xBF", "IDENTIFIER(a) UNDEFINED(\\xEF) UNDEFINED(\\xBB) UNDEFINED(\\xBF) END_OF_FILE()"},
    // Integers in every radix, with up to two suffix letters.
    {"123 0 0x1F 0X1fu 0xabcdefUL 0x1G", "INTEGER(123) WHITESPACE( ) INTEGER(0) WHITESPACE( ) INTEGER(0x1F) "
                                         "WHITESPACE( ) INTEGER(0X1fu) WHITESPACE( ) INTEGER(0xabcdefUL) "
                                         "WHITESPACE( ) INTEGER(0x1) IDENTIFIER(G) END_OF_FILE()"},
    {"10UL 10lu 10ULL 7u+1", "INTEGER(10UL) WHITESPACE( ) INTEGER(10lu) WHITESPACE( ) INTEGER(10UL) IDENTIFIER(L) "
                             "WHITESPACE( ) INTEGER(7u) PLUS(+) INTEGER(1) END_OF_FILE()"},
    {"017 0170 017u 0179", "INTEGER(017) WHITESPACE( ) INTEGER(0170) WHITESPACE( ) INTEGER(017u) WHITESPACE( ) "
                           "INTEGER(017) INTEGER(9) END_OF_FILE()"},
    {"0b101 0B1L 0b12", "INTEGER(0b101) WHITESPACE( ) INTEGER(0B1L) WHITESPACE( ) INTEGER(0b1) INTEGER(2) "
                        "END_OF_FILE()"},
    {"09 08 00 12abc", "INTEGER(0) INTEGER(9) WHITESPACE( ) INTEGER(0) INTEGER(8) WHITESPACE( ) INTEGER(0) "
                       "INTEGER(0) WHITESPACE( ) INTEGER(12) IDENTIFIER(abc) END_OF_FILE()"},
    // Floating literals; the text always gets its '.'.
    {"1.5e-3f .5 0.5e2 2e3 2E+3L 5. 1e", "FLOAT(1.5e-3f) WHITESPACE( ) FLOAT(.5) WHITESPACE( ) FLOAT(0.5e2) "
                                         "WHITESPACE( ) FLOAT(2.e3) WHITESPACE( ) FLOAT(2.E+3L) WHITESPACE( ) "
                                         "FLOAT(5.) WHITESPACE( ) FLOAT(1.e) END_OF_FILE()"},
    {"1.2.3 1.5ff 1.x 00.5 0e5", "FLOAT(1.2) FLOAT(.3) WHITESPACE( ) FLOAT(1.5f) IDENTIFIER(f) WHITESPACE( ) "
                                 "FLOAT(1.) IDENTIFIER(x) WHITESPACE( ) INTEGER(0) FLOAT(0.5) WHITESPACE( ) "
                                 "INTEGER(0) IDENTIFIER(e5) END_OF_FILE()"},
    {"x.y .e3", "IDENTIFIER(x) DOT(.) IDENTIFIER(y) WHITESPACE( ) DOT(.) IDENTIFIER(e3) END_OF_FILE()"},
    // Every punctuator, then longest matches.
    {"! != # ## % %= & && &= * *= + ++ +=", "EXCLAMATIONMARK(!) WHITESPACE( ) 518(!=) WHITESPACE( ) "
                                            "PREPROCESSOR_SWITCH(#) WHITESPACE( ) PREPROCESSOR_PASTE(##) "
                                            "WHITESPACE( ) PERCENT(%) WHITESPACE( ) 534(%=) WHITESPACE( ) "
                                            "AMPERSAND(&) WHITESPACE( ) 519(&&) WHITESPACE( ) 537(&=) WHITESPACE( ) "
                                            "STAR(*) WHITESPACE( ) 532(*=) WHITESPACE( ) PLUS(+) WHITESPACE( ) "
                                            "521(++) WHITESPACE( ) 530(+=) END_OF_FILE()"},
    {"- -- -= -> . / /= < << <= <<=", "MINUS(-) WHITESPACE( ) 528(--) WHITESPACE( ) 531(-=) WHITESPACE( ) 592(->) "
                                      "WHITESPACE( ) DOT(.) WHITESPACE( ) SLASH(/) WHITESPACE( ) 533(/=) "
                                      "WHITESPACE( ) LESS_THEN(<) WHITESPACE( ) 513(<<) WHITESPACE( ) 515(<=) "
                                      "WHITESPACE( ) 535(<<=) END_OF_FILE()"},
    {"> >> >= >>= ^ ^= = == | || |= ~", "GRATER_THEN(>) WHITESPACE( ) 514(>>) WHITESPACE( ) 516(>=) WHITESPACE( ) "
                                        "536(>>=) WHITESPACE( ) CARET(^) WHITESPACE( ) 544(^=) WHITESPACE( ) "
                                        "EQUALS(=) WHITESPACE( ) 517(==) WHITESPACE( ) HORIZONTAL_LINE(|) "
                                        "WHITESPACE( ) 520(||) WHITESPACE( ) 545(|=) WHITESPACE( ) TILDE(~) "
                                        "END_OF_FILE()"},
    {"()[]{},:;?", "LEFT_BRACKET(() RIGHT_BRACKET()) LEFT_SQUARE_BRACKET([) RIGHT_SQUARE_BRACKET(]) "
                   "LEFT_CURLY_BRACKET({) RIGHT_CURLY_BRACKET(}) COMMA(,) 58(:) SEMICOLON(;) QUESTIONMARK(?) "
                   "END_OF_FILE()"},
    {"a< <b <<< <<== >>>= --> ->>", "IDENTIFIER(a) LESS_THEN(<) WHITESPACE( ) LESS_THEN(<) IDENTIFIER(b) "
                                    "WHITESPACE( ) 513(<<) LESS_THEN(<) WHITESPACE( ) 535(<<=) EQUALS(=) "
                                    "WHITESPACE( ) 514(>>) 516(>=) WHITESPACE( ) 528(--) GRATER_THEN(>) "
                                    "WHITESPACE( ) 592(->) GRATER_THEN(>) END_OF_FILE()"},
    {"+++ === ||| ### a##b ~= ...", "521(++) PLUS(+) WHITESPACE( ) 517(==) EQUALS(=) WHITESPACE( ) 520(||) "
                                    "HORIZONTAL_LINE(|) WHITESPACE( ) PREPROCESSOR_PASTE(##) PREPROCESSOR_SWITCH(#) "
                                    "WHITESPACE( ) IDENTIFIER(a) PREPROCESSOR_PASTE(##) IDENTIFIER(b) WHITESPACE( ) "
                                    "TILDE(~) EQUALS(=) WHITESPACE( ) DOT(.) DOT(.) DOT(.) END_OF_FILE()"},
    {"<\n=", "LESS_THEN(<) NEWLINE(\\n) 2:EQUALS(=) END_OF_FILE()"},
    // Comments keep their text; a block comment carries its first line and counts the rest.
    {"x\n/*\n\n*/y", "IDENTIFIER(x) NEWLINE(\\n) 2:COMMENT(/*\\n\\n*/) 4:IDENTIFIER(y) END_OF_FILE()"},
    {"/*/x*/ /* a **/b", "COMMENT(/*/x*/) WHITESPACE( ) COMMENT(/* a **/) IDENTIFIER(b) END_OF_FILE()"},
    {"/* open\n\n", "COMMENT(/* open\\n\\n) 3:END_OF_FILE()"},
    {"// hi\r\nx//b", "COMMENT(// hi\\r) NEWLINE(\\n) 2:IDENTIFIER(x) COMMENT(//b) END_OF_FILE()"},
    {"// a /* b\nc */", "COMMENT(// a /* b) NEWLINE(\\n) 2:IDENTIFIER(c) WHITESPACE( ) STAR(*) SLASH(/) "
                        "END_OF_FILE()"},
    // Strings: no escape is decoded, an escaped quote does not end one, line ends inside are
    // not counted, and the end of input ends one.
    {R"("a\"b" "a\\"b "" "/*x*/")", "STRING(a\\\"b) WHITESPACE( ) STRING(a\\\\) IDENTIFIER(b) WHITESPACE( ) "
                                    "STRING() WHITESPACE( ) STRING(/*x*/) END_OF_FILE()"},
    {"\"a\nb\" c\nd", "STRING(a\\nb) WHITESPACE( ) IDENTIFIER(c) NEWLINE(\\n) 2:IDENTIFIER(d) END_OF_FILE()"},
    {"\"open\\\"", "STRING(open\\\") END_OF_FILE()"},
    {"\"open\\", "STRING(open\\) END_OF_FILE()"},
    // Words: the first keyword set that holds one decides, case-sensitively.
    {"VARIABLE IF MAX_VALUE7 TRUE", "EDDL_KEYWORD(VARIABLE) WHITESPACE( ) EDDL_KEYWORD(IF) WHITESPACE( ) "
                                    "EDDL_KEYWORD(MAX_VALUE7) WHITESPACE( ) EDDL_KEYWORD(TRUE) END_OF_FILE()"},
    {"if while DD_STRING static volatile", "265(if) WHITESPACE( ) 265(while) WHITESPACE( ) 265(DD_STRING) "
                                           "WHITESPACE( ) 272(static) WHITESPACE( ) 272(volatile) END_OF_FILE()"},
    {"Variable STATIC VARIABLES_ _x1 a1.b", "IDENTIFIER(Variable) WHITESPACE( ) IDENTIFIER(STATIC) WHITESPACE( ) "
                                            "IDENTIFIER(VARIABLES_) WHITESPACE( ) IDENTIFIER(_x1) WHITESPACE( ) "
                                            "IDENTIFIER(a1) DOT(.) IDENTIFIER(b) END_OF_FILE()"},
    // Other bytes are UNDEFINED tokens; 0xFF ends the input.
    {"$`@\x7F\x80\xFE", "UNDEFINED($) UNDEFINED(`) UNDEFINED(@) UNDEFINED(\\x7F) UNDEFINED(\\x80) UNDEFINED(\\xFE) "
                        "END_OF_FILE()"},
    {"a\0b"sv, "IDENTIFIER(a) UNDEFINED(\\x00) IDENTIFIER(b) END_OF_FILE()"},
    {"a\xFF" "b\nc", "IDENTIFIER(a) END_OF_FILE()"},
    {"\"str\xFF" "ing\"", "STRING(str) END_OF_FILE()"},
    // A backslash before a line end joins the lines; any other is reported, and everything
    // up to the next line feed is skipped, each skipped character counting as a line.
    {"a\\\nb\\\r\nc\\\rd", "IDENTIFIER(a) 2:IDENTIFIER(b) 3:IDENTIFIER(c) 4:IDENTIFIER(d) END_OF_FILE()"},
    {"a\\\r\n\r\nb", "IDENTIFIER(a) 2:WHITESPACE(\\r) NEWLINE(\\n) 3:IDENTIFIER(b) END_OF_FILE()"},
    {"a\\ 0123456789\nb", "IDENTIFIER(a) 13:IDENTIFIER(b) END_OF_FILE()", "name.ddl (1): error: Trailing '\\'.\n"},
    {"\\ a\n\\ b\nc", "7:IDENTIFIER(c) END_OF_FILE()",
     "name.ddl (1): error: Trailing '\\'.\nname.ddl (4): error: Trailing '\\'.\n"},
    {"a\\", "IDENTIFIER(a) END_OF_FILE()", "name.ddl (1): error: Trailing '\\'.\n"},
};

TEST(Lexer, Table) {
    for (const Case& c : cases) {
        SCOPED_TRACE(escaped(c.input));
        std::string diagnostics;
        EXPECT_EQ(lex(c.input, false, diagnostics), c.tokens);
        EXPECT_EQ(diagnostics, c.diagnostics);
    }
}

// How the preprocessor reads its lexers: a run of blanks is one token; a line end, a line
// continuation or any other character ends it.
TEST(Lexer, BlankRuns) {
    std::string diagnostics;
    EXPECT_EQ(lex("\t\v  x \r\n  y", true, diagnostics),
              "WHITESPACE(\\t\\x0B  ) IDENTIFIER(x) WHITESPACE( \\r) NEWLINE(\\n) 2:WHITESPACE(  ) IDENTIFIER(y) "
              "END_OF_FILE()");
    EXPECT_EQ(lex("a \\\n b \f ", true, diagnostics),
              "IDENTIFIER(a) WHITESPACE( ) 2:WHITESPACE( ) IDENTIFIER(b) WHITESPACE( ) UNDEFINED(\\x0C) "
              "WHITESPACE( ) END_OF_FILE()");
}

}  // namespace
}  // namespace edd
