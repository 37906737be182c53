// The lexer as one table: input -> every token with its kind, text and line, and what it
// reports. A token prints as kind(text), a punctuator as its text (with "#kind" when that
// is not its character code); "N:" marks the first token on a new line N.
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

std::string kind_word(const Token& t) {
    switch (t.kind()) {
    case IDENTIFIER: return "id";
    case INTEGER: return "int";
    case FLOAT: return "float";
    case STRING: return "str";
    case EDDL_KEYWORD: return "kw";
    case METHOD_KEYWORD: return "mkw";
    case RESERVED_WORD: return "res";
    case WHITESPACE: return "ws";
    case NEWLINE: return "nl";
    case COMMENT: return "cmt";
    case UNDEFINED: return "undef";
    case ERROR: return "err";
    default: return "";
    }
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
            return out + "eof";
        }
        const std::string word = kind_word(t);
        if (!word.empty()) out += word + '(' + escaped(t.text()) + ')';
        else if (t.text().size() == 1 && t.kind() == static_cast<unsigned char>(t.text()[0])) out += t.text();
        else out += escaped(t.text()) + '#' + std::to_string(t.kind());
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
    {"a\r\nb", "id(a) ws(\\r) nl(\\n) 2:id(b) eof"},
    {"\t\v  x\n\n", "ws(\\t) ws(\\x0B) ws( ) ws( ) id(x) nl(\\n) 2:nl(\\n) 3:eof"},
    {"a\rb\f", "id(a) ws(\\r) id(b) undef(\\x0C) eof"},
    {"", "eof"},
    // A byte-order mark at the start: each of its bytes, in order, is dropped.
    {"\xEF\xBB\xBF" "a", "id(a) eof"},
    {"\xBB\xBF" "a", "id(a) eof"},
    {"\xEF\xBF" "a", "id(a) eof"},
    {"\xBF\xBB" "a", "undef(\\xBB) id(a) eof"},
    {"\xEF\xBB\xBF\xEF" "a", "undef(\\xEF) id(a) eof"},
    {"a\xEF\xBB\xBF", "id(a) undef(\\xEF) undef(\\xBB) undef(\\xBF) eof"},
    // Integers in every radix, with up to two suffix letters.
    {"123 0 0x1F 0X1fu 0xabcdefUL 0x1G", "int(123) ws( ) int(0) ws( ) int(0x1F) ws( ) int(0X1fu) ws( ) "
                                         "int(0xabcdefUL) ws( ) int(0x1) id(G) eof"},
    {"10UL 10lu 10ULL 7u+1", "int(10UL) ws( ) int(10lu) ws( ) int(10UL) id(L) ws( ) int(7u) + int(1) eof"},
    {"017 0170 017u 0179", "int(017) ws( ) int(0170) ws( ) int(017u) ws( ) int(017) int(9) eof"},
    {"0b101 0B1L 0b12", "int(0b101) ws( ) int(0B1L) ws( ) int(0b1) int(2) eof"},
    {"09 08 00 12abc", "int(0) int(9) ws( ) int(0) int(8) ws( ) int(0) int(0) ws( ) int(12) id(abc) eof"},
    // Floating literals; the text always gets its '.'.
    {"1.5e-3f .5 0.5e2 2e3 2E+3L 5. 1e", "float(1.5e-3f) ws( ) float(.5) ws( ) float(0.5e2) ws( ) float(2.e3) ws( ) "
                                         "float(2.E+3L) ws( ) float(5.) ws( ) float(1.e) eof"},
    {"1.2.3 1.5ff 1.x 00.5 0e5", "float(1.2) float(.3) ws( ) float(1.5f) id(f) ws( ) float(1.) id(x) ws( ) int(0) "
                                 "float(0.5) ws( ) int(0) id(e5) eof"},
    {"x.y .e3", "id(x) . id(y) ws( ) . id(e3) eof"},
    // Every punctuator, then longest matches.
    {"! != # ## % %= & && &= * *= + ++ +=", "! ws( ) !=#518 ws( ) # ws( ) ###769 ws( ) % ws( ) %=#534 ws( ) & ws( ) "
                                             "&&#519 ws( ) &=#537 ws( ) * ws( ) *=#532 ws( ) + ws( ) ++#521 ws( ) +=#530 eof"},
    {"- -- -= -> . / /= < << <= <<=", "- ws( ) --#528 ws( ) -=#531 ws( ) ->#592 ws( ) . ws( ) / ws( ) /=#533 ws( ) < "
                                      "ws( ) <<#513 ws( ) <=#515 ws( ) <<=#535 eof"},
    {"> >> >= >>= ^ ^= = == | || |= ~", "> ws( ) >>#514 ws( ) >=#516 ws( ) >>=#536 ws( ) ^ ws( ) ^=#544 ws( ) = ws( ) "
                                        "==#517 ws( ) | ws( ) ||#520 ws( ) |=#545 ws( ) ~ eof"},
    {"()[]{},:;?", "( ) [ ] { } , : ; ? eof"},
    {"a< <b <<< <<== >>>= --> ->>", "id(a) < ws( ) < id(b) ws( ) <<#513 < ws( ) <<=#535 = ws( ) >>#514 >=#516 ws( ) "
                                    "--#528 > ws( ) ->#592 > eof"},
    {"+++ === ||| ### a##b ~= ...", "++#521 + ws( ) ==#517 = ws( ) ||#520 | ws( ) ###769 # ws( ) id(a) ###769 id(b) "
                                    "ws( ) ~ = ws( ) . . . eof"},
    {"<\n=", "< nl(\\n) 2:= eof"},
    // Comments keep their text; a block comment carries its first line and counts the rest.
    {"x\n/*\n\n*/y", "id(x) nl(\\n) 2:cmt(/*\\n\\n*/) 4:id(y) eof"},
    {"/*/x*/ /* a **/b", "cmt(/*/x*/) ws( ) cmt(/* a **/) id(b) eof"},
    {"/* open\n\n", "cmt(/* open\\n\\n) 3:eof"},
    {"// hi\r\nx//b", "cmt(// hi\\r) nl(\\n) 2:id(x) cmt(//b) eof"},
    {"// a /* b\nc */", "cmt(// a /* b) nl(\\n) 2:id(c) ws( ) * / eof"},
    // Strings: no escape is decoded, an escaped quote does not end one, line ends inside are
    // not counted, and the end of input ends one.
    {R"("a\"b" "a\\"b "" "/*x*/")", "str(a\\\"b) ws( ) str(a\\\\) id(b) ws( ) str() ws( ) str(/*x*/) eof"},
    {"\"a\nb\" c\nd", "str(a\\nb) ws( ) id(c) nl(\\n) 2:id(d) eof"},
    {"\"open\\\"", "str(open\\\") eof"},
    // Words: the first keyword set that holds one decides, case-sensitively.
    {"VARIABLE IF MAX_VALUE7 TRUE", "kw(VARIABLE) ws( ) kw(IF) ws( ) kw(MAX_VALUE7) ws( ) kw(TRUE) eof"},
    {"if while DD_STRING static volatile", "mkw(if) ws( ) mkw(while) ws( ) mkw(DD_STRING) ws( ) res(static) ws( ) "
                                           "res(volatile) eof"},
    {"Variable STATIC VARIABLES_ _x1 a1.b", "id(Variable) ws( ) id(STATIC) ws( ) id(VARIABLES_) ws( ) id(_x1) ws( ) "
                                            "id(a1) . id(b) eof"},
    // Other bytes are UNDEFINED tokens; 0xFF ends the input.
    {"$`@\x7F\x80\xFE", "undef($) undef(`) undef(@) undef(\\x7F) undef(\\x80) undef(\\xFE) eof"},
    {"a\0b"sv, "id(a) undef(\\x00) id(b) eof"},
    {"a\xFF" "b\nc", "id(a) eof"},
    {"\"str\xFF" "ing\"", "str(str) eof"},
    // A backslash before a line end joins the lines; any other is reported, and everything
    // up to the next line feed is skipped, each skipped character counting as a line.
    {"a\\\nb\\\r\nc\\\rd", "id(a) 2:id(b) 3:id(c) 4:id(d) eof"},
    {"a\\\r\n\r\nb", "id(a) 2:ws(\\r) nl(\\n) 3:id(b) eof"},
    {"a\\ 0123456789\nb", "id(a) 13:id(b) eof", "name.ddl (1): error: Trailing '\\'.\n"},
    {"\\ a\n\\ b\nc", "7:id(c) eof", "name.ddl (1): error: Trailing '\\'.\nname.ddl (4): error: Trailing '\\'.\n"},
    {"a\\", "id(a) eof", "name.ddl (1): error: Trailing '\\'.\n"},
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
    EXPECT_EQ(lex("\t\v  x \r\n  y", true, diagnostics), "ws(\\t\\x0B  ) id(x) ws( \\r) nl(\\n) 2:ws(  ) id(y) eof");
    EXPECT_EQ(lex("a \\\n b \f ", true, diagnostics), "id(a) ws( ) 2:ws( ) id(b) ws( ) undef(\\x0C) ws( ) eof");
}

}  // namespace
}  // namespace edd
