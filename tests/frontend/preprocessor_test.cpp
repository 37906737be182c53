// SPDX-License-Identifier: Apache-2.0
// The preprocessor as one table: main.ddl -> the spellings it delivers (blanks dropped,
// ERR for an ERROR token) and the exact diagnostics. Include files lie in a scratch
// directory whose include paths are $DIR/one and $DIR/two.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "frontend/keywords.hpp"
#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "test_support.hpp"

namespace edd {
namespace {

// A delivered token, its text copied: made texts go with the preprocessor.
struct Delivered {
    std::uint32_t kind;
    std::string text;
    std::string file_name;
    int line;
    Word word;
};

struct Drained {
    std::vector<Delivered> tokens;
    std::string spellings;
    std::string diagnostics;
};

Drained drain(std::string text, std::vector<std::string> include_paths) {
    std::ostringstream diag;
    Diagnostics sink(diag, diag);
    InputFiles files;
    Lexer lexer = Lexer::from_text(std::move(text), "main.ddl", sink);
    Preprocessor pp(lexer, std::move(include_paths), files, sink);
    Drained out;
    for (Token t = pp.next_token(); !t.is(END_OF_FILE); t = pp.next_token()) {
        if (t.is(WHITESPACE) || t.is(NEWLINE) || t.is(COMMENT)) continue;
        EXPECT_EQ(t.is(ERROR), t.text() == "preprocessor error");
        if (!out.spellings.empty()) out.spellings += ' ';
        out.spellings += t.is(ERROR) ? std::string("ERR") : std::string(t.text());
        out.tokens.push_back({t.kind(), std::string(t.text()), t.file_name(), t.line(), t.word()});
    }
    out.diagnostics = diag.str();
    return out;
}

class PreprocessorTest : public ::testing::Test {
protected:
    void SetUp() override {
        dir_.write("one/a.ddl", "first\n");
        dir_.write("two/a.ddl", "second\n");
        dir_.write("two/b.ddl", "only_two\n");
        dir_.write("one/guarded.ddl", "#ifndef GUARD\n#define GUARD\ng\n#endif\n");
        dir_.write("one/plain.ddl", "p\n");
        dir_.write("one/ma.ddl", "#ifndef MA\n#define MA\nma\n#include \"mb.ddl\"\n#endif\n");
        dir_.write("one/mb.ddl", "#ifndef MB\n#define MB\nmb\n#include \"ma.ddl\"\n#endif\n");
        dir_.write("one/sub/inner.ddl", "in\n#include \"leaf.ddl\"\n");
        dir_.write("one/sub/leaf.ddl", "leaf\n");
        dir_.write("one/inc.ddl", "\n\ninc_a\n#define M m\ninc_b M\n");
    }
    Drained run(std::string text) { return drain(std::move(text), {dir_.str() + "/one", dir_.str() + "/two"}); }
    std::string with_dir(std::string text) const {
        for (auto at = text.find("$DIR"); at != std::string::npos; at = text.find("$DIR"))
            text.replace(at, 4, dir_.str());
        return text;
    }
    test::TempDir dir_;
};

struct Case {
    std::string_view input;
    std::string_view spellings;
    std::string_view diagnostics = "";
};

const Case cases[] = {
    // Object-like and function-like macros; commas inside parentheses belong to an argument,
    // macros inside an argument are expanded while it is collected.
    {"#define A 1\n#define E\nA+A x E y", "1 + 1 x y"},
    {"#define F(a,b) a-b\n#define G(a) [a]\nF(1,2) G (2) G + G", "1 - 2 [ 2 ] G + G"},
    {"#define F(a,b) [a|b]\nF((1,2),(3))", "[ ( 1 , 2 ) | ( 3 ) ]"},
    {"#define ONE 1\n#define F(a,b) [b a]\nF(x ONE, z) F(LABEL, 1)", "[ z x 1 ] [ 1 LABEL ]"},
    {"#define F(LABEL) [LABEL]\nF(1)", "[ 1 ]"},
    // Keyword-named macros are defined but never expanded.
    {"#define VARIABLE 1\n#define while 2\nVARIABLE while", "VARIABLE while"},
    {"#define F() 1\nF()", "1 ( )",
     "main.ddl(1): warning: Function macros with empty arguments are not defined by the EDDL spec.\n"},
    {"#define A\n#define A 2\nx A y", "x y", "main.ddl(2): warning: Macro A is already defined.\n"},
    {"#define A 1\n#undef A\nA\n#define A 2\nA", "A 2"},
    {"#define 1 2\nx", "x", "main.ddl(1): error: 1 is not an identifier. Macro names must be identifiers.\n"},
    {"#define \"s\" 2\nx", "x", "main.ddl(1): error: s is not an identifier. Macro names must be identifiers.\n"},
    // Bodies are rescanned when read; names known at the define are expanded into the body
    // at once, where "#" and "##" are not applied.
    {"#define A x B\n#define B 1\nA", "x 1"},
    {"#define B 1\n#define A x B\n#undef B\nA", "x 1"},
    // A body taken over whole outlives its macro, and reads the same inside a conditional.
    {"#define A 1 2\n#define B A A\n#undef A\n#if 1\nB\n#endif\nB", "1 2 1 2 1 2 1 2"},
    // A body is taken over only while it names no macro, asked again after each define;
    // one that mixes in "##" still pastes.
    {"#define A B\n#define B 1\n#define C A\n#undef B\nC", "1"},
    {"#define A B\n#define C A\n#define B 1\n#define D A\n#undef B\nC D", "B 1"},
    {"#define P a\n#define Q x ## y P\nQ", "xy a"},
    {"#define S(x) #x\n#define T S(a b)\nT", "\"a\" b"},
    {"#define xy 5\n#define P(a,b) [a##b]\nP(x,y)", "[ 5 ]"},
    // Only the tokens beside "##" are joined; the rest of each argument stays as it is.
    {"#define P(a,b) a##b\nP(x, y z) P(1 2, 3)", "xy z 1 23"},
    {"#define S(a) #a\nS(a  \t b /* c */ d) S( e f  )", "\"a    b   d\" \"e f\""},
    {"#define B x  \n#define S(a) #a\nS(B y)", "\"x y\""},
    // Macros that refer to themselves end.
    {"#define A x A\nA A", "x A x A"},
    {"#define A x B\n#define B y A\nA B", "x y x B y x B"},
    {"#define F(a) F(a a)\nF(x)", "F ( x x )"},
    {"#define F(x) x F\nF(1)(2)", "1 F ( 2 )"},
    // Failed expansions and directives become ERROR tokens.
    {"#define F(a,b) a b\nF(1)", "ERR", "main.ddl(2): error: The number of parameters does not match.\n"},
    {"#define S(a) a #\nS(1)", "ERR", "main.ddl(2): error: Tried to strigify tokens but no content is available.\n"},
    {"#define P(a) ##a\nP(1)", "ERR", "main.ddl(2): error: Tried to paste tokens but no content is available.\n"},
    {"#define P(a,b) a##b\nP(x,)", "ERR", "main.ddl(2): error: Tried to paste tokens but no content is available.\n"},
    {"#define F(a b) a\n", "ERR ) a", "main.ddl(1): error: Error in argument list.\n"},
    {"#undef 1\nx", "ERR x", "main.ddl(1): error: Macro name must be a identifier.\n"},
    {"#undef X\ny", "ERR y", "main.ddl(1): error: Trying to undefine macro X but macro is not defined.\n"},
    // Conditionals: only a literal 0 is false; the operand is read raw.
    {"#if 0\na\n#endif\n#if 00\nb\n#endif\n#if 0 + 1\nc\n#endif\nd", "d"},
    {"#define Z 0\n#if 0x0\na\n#endif\n#if X\nb\n#endif\n#if Z\nc\n#endif", "a b c"},
    {"#if 0\na\n#else\nc\n#endif\n#if 1\nd\n#else\ne\n#endif", "c d"},
    {"#define A\n#ifdef A\nx\n#else\ny\n#endif\n#ifndef A\nz\n#else\nw\n#endif\n#ifdef B\nv\n#endif", "x w"},
    {"#if 0\n#if 1\na\n#else\nb\n#endif\nc\n#else\nd\n#if 0\ne\n#else\nf\n#endif\n#endif", "d f"},
    // A nested branch's kept tokens are read again by every branch around it.
    {"#define A A x\n#if 1\n#if 1\n#if 1\nA\n#endif\n#endif\n#endif", "A x x x x"},
    {"#if 1\n#if 1\nX\n#endif\n#define X 5\n#endif", "5"},
    {"#define F(a) [a]\n#if 1\n#if 1\nF\n#endif\n(1)\n#endif", "F ( 1 )"},
    // ... also when a macro defined later in the nested branch is gone by the outer #endif,
    // and when the outer branch holds a token that reads back otherwise.
    {"#if 1\n#if 1\nA\n#define A 1\n#endif\n#undef A\n#endif", "1"},
    {"#define B B+1\n#if 1\n#if 1\nB\n#if 1\nC\n#endif\n#endif\n#endif", "B + 1 + 1 + 1 C"},
    // Dropped branches define and include nothing; undef and line act even there.
    {"#if 0\n#define A 1\n#include \"missing.ddl\"\n#endif\nA", "A"},
    {"#define A 1\n#if 0\n#undef A\n#line 7\n#endif\nA", "A",
     "main.ddl(4): warning: Preprocessor directive 'line' is not implmented.\n"},
    {"#if 1\na\n", "ERR", "main.ddl(3): error: End of file within conditional directive.\n"},
    {"#ifdef 1\n", "ERR", "main.ddl(1): error: Macro name must be a identifier.\n"},
    // Other directives.
    {"#\na\n#   \nb\n#endif\nc", "a b endif c"},
    {"#pragma once\nx", "ERR once x", "main.ddl(1): error: Unknown preprocessor directive pragma.\n"},
    {"\n# 1\nx", "ERR x", "main.ddl(2): error: Unknown preprocessor directive 1.\n"},
    {"#include <x>\ny", "ERR x > y", "main.ddl(1): error: Include with '<>' are not implemented.\n"},
    {"#include x\ny", "ERR y", "main.ddl(1): error: Error in include, no proper file given.\n"},
    // Includes: the include paths in order, never the including file's directory.
    {"#include \"a.ddl\"\n#include \"b.ddl\"\nend", "first only_two end"},
    {"#include \"guarded.ddl\"\n#include \"guarded.ddl\"\n#include \"plain.ddl\"\n#include \"plain.ddl\"", "g p p"},
    {"#include \"ma.ddl\"\n#include \"mb.ddl\"\nend", "ma mb end"},
    // A directive made by an expansion: what the expansion holds after it comes first.
    {"#define F(a,b,c,d) a b c d\nF(#, include, \"a.ddl\", more) x", "more first x"},
    {"x\n#include \"nothere.ddl\"\ny", "x ERR y",
     "main.ddl(2): error: Could not find or read include file nothere.ddl.\nInclude path is:\n$DIR/one\n$DIR/two\n\n"},
    {"#include \"sub/inner.ddl\"\nend", "in ERR end",
     "$DIR/one/sub/inner.ddl(2): error: Could not find or read include file leaf.ddl.\nInclude path is:\n"
     "$DIR/one\n$DIR/two\n\n"},
};

TEST_F(PreprocessorTest, Table) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        const Drained result = run(std::string(c.input));
        EXPECT_EQ(result.spellings, c.spellings);
        EXPECT_EQ(result.diagnostics, with_dir(std::string(c.diagnostics)));
    }
}

// A pasted token keeps the left token's kind and gets the word of its text, which the
// parser tests; a stringified one is a STRING with its quotes, and no word.
TEST_F(PreprocessorTest, MadeTokensTheirKinds) {
    const Drained result = run("#define S(a) #a\n#define T #foo\n#define P(a,b) a ## b\n"
                               "S(hello) T P(x,1) P(1,x) P(+,=) P(LA,BEL) P(-,>) S(IF)");
    std::vector<std::uint32_t> kinds;
    std::vector<Word> words;
    for (const Delivered& t : result.tokens) {
        kinds.push_back(t.kind);
        words.push_back(t.word);
    }
    EXPECT_EQ(result.spellings, "\"hello\" \"foo\" x1 1x += LABEL -> \"IF\"");
    EXPECT_EQ(kinds, (std::vector<std::uint32_t>{STRING, STRING, IDENTIFIER, INTEGER, PLUS, IDENTIFIER, MINUS, STRING}));
    EXPECT_EQ(words, (std::vector<Word>{Word(), Word(), Word(), Word(), "+=", "LABEL", "->", Word()}));
}

// Expanded tokens carry the position where they were written: the body's line for the
// body, the argument's for an argument, the file of the definition.
TEST_F(PreprocessorTest, Positions) {
    const Drained result = run("#define A x\n#define F(a) [a]\n#define S(a) #a\n#define P(a,b) a##b\n"
                               "A\nF(\ny)\nS(q)\nP(\nu,v) w\n#include \"inc.ddl\"\nz M");
    std::string positions;
    for (const Delivered& t : result.tokens)
        positions += t.text + (t.file_name == "main.ddl" ? "" : "@inc") + ':' + std::to_string(t.line) + ' ';
    EXPECT_EQ(positions, "x:1 [:2 y:7 ]:2 \"q\":3 uv:10 w:10 inc_a@inc:3 inc_b@inc:5 m@inc:4 z:12 m@inc:4 ");
}

// 200 nested files are read; the 201st is refused once and reading goes on in main.ddl.
TEST_F(PreprocessorTest, SelfIncludeStopsAtTheNestingLimit) {
    dir_.write("one/self.ddl", "s\n#include \"self.ddl\"\n");
    const Drained result = run("#include \"self.ddl\"\nend");
    EXPECT_EQ(result.diagnostics, dir_.str() + "/one/self.ddl(2): error: Include nesting too deep.\n");
    std::string expected;
    for (int i = 0; i < 200; ++i) expected += "s ";
    EXPECT_EQ(result.spellings, expected + "ERR end");
}

}  // namespace
}  // namespace edd
