// The preprocessor drained to spellings: macros, operators, conditionals, directives,
// includes, the exact diagnostics lines and the positions expanded tokens carry.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frontend/pp_helpers.hpp"

namespace edd {
namespace {

using test::preprocess;
using test::Preprocessed;
using test::TempDir;
using Spellings = std::vector<std::string>;

constexpr const char* kError = "preprocessor error";

struct Case {
    std::string input;
    Spellings expected;
    std::string diagnostics;  // the exact text; empty when nothing may be printed
};

// Every "preprocessor error" spelling must come from an ERROR token, and every ERROR token
// must spell it.
void expect_error_tokens_consistent(const Preprocessed& result) {
    for (const Token& token : result.tokens) {
        EXPECT_EQ(token.is(ERROR), token.text() == kError) << to_string(token);
    }
}

void run_cases(const std::vector<Case>& cases, const std::vector<std::string>& include_paths = {}) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        const Preprocessed result = preprocess(c.input, include_paths);
        EXPECT_EQ(result.spellings(), c.expected);
        EXPECT_EQ(result.diagnostics, c.diagnostics);
        expect_error_tokens_consistent(result);
    }
}

TEST(PreprocessorMacros, ExpandObjectAndFunctionLikeMacros) {
    run_cases({
        {"#define A 1\nA+A", {"1", "+", "1"}, ""},
        {"#define E\nx E y", {"x", "y"}, ""},
        {"#define F(a,b) a-b\nF(1,2)", {"1", "-", "2"}, ""},
        {"#define F(a) [a]\nF (2)", {"[", "2", "]"}, ""},
        // A function-like macro without "(" after its name stays as it is.
        {"#define F(a) [a]\nF + F", {"F", "+", "F"}, ""},
        // Commas inside parentheses belong to the argument.
        {"#define F(a,b) [a|b]\nF((1,2),(3))", {"[", "(", "1", ",", "2", ")", "|", "(", "3", ")", "]"}, ""},
        {"#define F(a) <a>\nF(g(h(1,2),3))", {"<", "g", "(", "h", "(", "1", ",", "2", ")", ",", "3", ")", ">"}, ""},
        // Macros inside an argument are expanded while it is collected.
        {"#define ONE 1\n#define F(a) [a]\nF(ONE)", {"[", "1", "]"}, ""},
        {"#define F(a,b) [b a]\nF(x y, z)", {"[", "z", "x", "y", "]"}, ""},
        // A description-language keyword may name a parameter.
        {"#define F(LABEL) [LABEL]\nF(1)", {"[", "1", "]"}, ""},
        // Keyword-named macros are defined but never expanded.
        {"#define VARIABLE 1\n#define while 2\nVARIABLE while", {"VARIABLE", "while"}, ""},
        {"#define MENU 1\n#define MENU 2\n", {}, "main.ddl(2): warning: Macro MENU is already defined.\n"},
        // An empty parameter list makes an object-like macro; its "(" ")" at a use stay.
        {"#define F() 1\nF()",
         {"1", "(", ")"},
         "main.ddl(1): warning: Function macros with empty arguments are not defined by the EDDL spec.\n"},
        // A redefinition warns and keeps the first body.
        {"#define A\n#define A 2\nx A y", {"x", "y"}, "main.ddl(2): warning: Macro A is already defined.\n"},
        {"#define A 1\n#define A 2\nA", {"1"}, "main.ddl(2): warning: Macro A is already defined.\n"},
        {"#define A 1\n#undef A\nA", {"A"}, ""},
        {"#define A 1\n#undef A\n#define A 2\nA", {"2"}, ""},
        // A bad macro name is reported, its line dropped, and nothing is thrown.
        {"#define 1 2\nx", {"x"}, "main.ddl(1): error: 1 is not an identifier. Macro names must be identifiers.\n"},
        {"#define \"s\" 2\nx", {"x"}, "main.ddl(1): error: s is not an identifier. Macro names must be identifiers.\n"},
    });
}

TEST(PreprocessorMacros, RescanBodiesWhenReadAndWhenDefined) {
    run_cases({
        // B is defined after A: expanded when A's expansion is read.
        {"#define A x B\n#define B 1\nA", {"x", "1"}, ""},
        // B is defined before A: expanded into A's body at once, so undefining B changes nothing.
        {"#define B 1\n#define A x B\n#undef B\nA", {"x", "1"}, ""},
        {"#define F(a) (a)\n#define A x F(2)\n#undef F\nA", {"x", "(", "2", ")"}, ""},
        // At define time "#" is not applied: T's body is "# a b", stringified only when T is used.
        {"#define S(x) #x\n#define T S(a b)\nT", {"\"a\"", "b"}, ""},
        // A pasted name is looked up again.
        {"#define xy 5\n#define P(a,b) [a##b]\nP(x,y)", {"[", "5", "]"}, ""},
    });
}

TEST(PreprocessorMacros, StringifyGivesOneBlankPerBlankCharacter) {
    run_cases({
        // Blanks are read in runs, comments count as one blank each.
        {"#define S(a) #a\nS(a  \t b /* c */ d)", {"\"a    b   d\""}, ""},
    });
}

TEST(PreprocessorMacros, RecursiveMacrosTerminate) {
    run_cases({
        {"#define A A\nA", {"A"}, ""},
        {"#define A x A\nA A", {"x", "A", "x", "A"}, ""},
        {"#define A x B\n#define B y A\nA B", {"x", "y", "x", "B", "y", "x", "B"}, ""},
        {"#define F(a) F(a a)\nF(x)", {"F", "(", "x", "x", ")"}, ""},
        // The inner F is read while F's expansion is still open, so it stays even though "(" follows.
        {"#define F(x) x F\nF(1)(2)", {"1", "F", "(", "2", ")"}, ""},
    });
}

TEST(PreprocessorMacros, StringifyAndPasteBuildTokens) {
    const Preprocessed result = preprocess(
        "#define S(a) #a\n"
        "#define T #foo\n"
        "#define P(a,b) a ## b\n"
        "S(hello) T P(x,1) P(1,x) P(+,=)");
    EXPECT_EQ(result.diagnostics, "");
    const std::vector<std::pair<std::uint32_t, std::string>> expected = {
        {STRING, "\"hello\""}, {STRING, "\"foo\""}, {IDENTIFIER, "x1"}, {INTEGER, "1x"}, {PLUS, "+="},
    };
    ASSERT_EQ(result.tokens.size(), expected.size()) << ::testing::PrintToString(result.spellings());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(result.tokens[i].kind(), expected[i].first) << i;
        EXPECT_EQ(result.tokens[i].text(), expected[i].second) << i;
    }
}

TEST(PreprocessorMacros, FailedExpansionsBecomeErrorTokens) {
    run_cases({
        {"#define F(a,b) a b\nF(1)", {kError}, "main.ddl(2): error: The number of parameters does not match.\n"},
        {"#define F(a) a\nF(1,2)", {kError}, "main.ddl(2): error: The number of parameters does not match.\n"},
        {"#define S(a) a #\nS(1)", {kError}, "main.ddl(2): error: Tried to strigify tokens but no content is available.\n"},
        {"#define E #\nE", {kError}, "main.ddl(2): error: Tried to strigify tokens but no content is available.\n"},
        {"#define P(a) ##a\nP(1)", {kError}, "main.ddl(2): error: Tried to paste tokens but no content is available.\n"},
        {"#define P(a) a##\nP(1)", {kError}, "main.ddl(2): error: Tried to paste tokens but no content is available.\n"},
        {"#define P(a,b) a##b\nP(,y)", {kError}, "main.ddl(2): error: Tried to paste tokens but no content is available.\n"},
        {"#define P(a,b) a##b\nP(x,)", {kError}, "main.ddl(2): error: Tried to paste tokens but no content is available.\n"},
        {"#undef 1\nx", {kError, "x"}, "main.ddl(1): error: Macro name must be a identifier.\n"},
        {"#undef X\ny", {kError, "y"}, "main.ddl(1): error: Trying to undefine macro X but macro is not defined.\n"},
        {"#define A 1\n#undef A\n#undef A\n", {kError}, "main.ddl(3): error: Trying to undefine macro A but macro is not defined.\n"},
    });
}

TEST(PreprocessorMacros, BadParameterListIsAnError) {
    const Preprocessed result = preprocess("#define F(a b) a\n");
    EXPECT_EQ(result.diagnostics, "main.ddl(1): error: Error in argument list.\n");
    ASSERT_FALSE(result.tokens.empty());
    EXPECT_TRUE(result.tokens.front().is(ERROR));
}

TEST(PreprocessorConditionals, KeepOnlyTheTakenBranch) {
    run_cases({
        {"#if 0\na\n#endif\nb", {"b"}, ""},
        {"#if 00\na\n#endif\nb", {"b"}, ""},
        {"#if 0x0\na\n#endif\nb", {"a", "b"}, ""},
        {"#if 1\na\n#endif\nb", {"a", "b"}, ""},
        {"#if X\na\n#endif\nb", {"a", "b"}, ""},
        {"#if 0 + 1\na\n#endif\nb", {"b"}, ""},
        // The operand is read raw: a macro that expands to 0 still counts as true.
        {"#define Z 0\n#if Z\na\n#endif", {"a"}, ""},
        {"#if 0\na\n#else\nc\n#endif\nd", {"c", "d"}, ""},
        {"#if 1\na\n#else\nc\n#endif\nd", {"a", "d"}, ""},
        {"#define A\n#ifdef A\nx\n#else\ny\n#endif", {"x"}, ""},
        {"#ifdef A\nx\n#else\ny\n#endif", {"y"}, ""},
        {"#ifndef A\nx\n#else\ny\n#endif", {"x"}, ""},
        {"#define A\n#ifndef A\nx\n#else\ny\n#endif", {"y"}, ""},
        {"#define A 1\n#if 1\nA\n#endif", {"1"}, ""},
        // Nesting, in a taken and in a dropped branch.
        {"#define A\n#ifdef A\n#ifndef B\nx\n#else\ny\n#endif\n#else\nz\n#endif\nw", {"x", "w"}, ""},
        {"#if 0\n#if 1\na\n#else\nb\n#endif\nc\n#else\nd\n#if 0\ne\n#else\nf\n#endif\n#endif", {"d", "f"}, ""},
    });
}

// The kept tokens of a nested conditional are delivered again by every branch around it,
// under the macros defined at that moment: a macro naming itself grows once per level, and
// a name defined after it was read is expanded by the enclosing branch.
TEST(PreprocessorConditionals, NestedKeptTokensAreReadAgainAtEveryLevel) {
    run_cases({
        {"#define A A x\n#if 1\n#if 1\n#if 1\nA\n#endif\n#endif\n#endif", {"A", "x", "x", "x", "x"}, ""},
        {"#if 1\n#if 1\nX\n#endif\n#define X 5\n#endif", {"5"}, ""},
        {"#if 1\n#if 1\nX\n#define X 5\n#endif\nX\n#endif", {"5", "5"}, ""},
        {"#if 1\na\n#if 1\nb c d\n#endif\ne\n#if 1\n#if 1\nf\n#endif\n#endif\n#endif", {"a", "b", "c", "d", "e", "f"}, ""},
        {"#if 0\n#if 1\na\n#endif\n#endif\nb", {"b"}, ""},
        // A function-like name is looked at again too: the line end keeps it from its "(".
        {"#define F(a) [a]\n#if 1\n#if 1\nF\n#endif\n(1)\n#endif", {"F", "(", "1", ")"}, ""},
        {"#define F(a) [a]\n#if 1\n#if 1\nF\n#endif\n#endif\n(1)", {"F", "(", "1", ")"}, ""},
        {"#define F(a) [a]\n#if 1\n#if 1\nF\n#endif (1)\n#endif", {"F", "(", "1", ")"}, ""},
    });
}

TEST(PreprocessorConditionals, DroppedBranchesDefineAndIncludeNothing) {
    run_cases({
        {"#if 0\n#define A 1\n#endif\nA", {"A"}, ""},
        {"#if 1\n#else\n#define A 1\n#endif\nA", {"A"}, ""},
        {"#ifdef X\n#define A 1\n#endif\n#ifdef A\nyes\n#else\nno\n#endif", {"no"}, ""},
        {"#if 0\n#include \"missing.ddl\"\n#endif\nx", {"x"}, ""},
        // undef and line act even there.
        {"#define A 1\n#if 0\n#undef A\n#endif\nA", {"A"}, ""},
        {"#if 0\n#line 7\n#endif\nx", {"x"}, "main.ddl(2): warning: Preprocessor directive 'line' is not implmented.\n"},
    });
}

TEST(PreprocessorConditionals, UnterminatedOrMalformedConditionalIsAnError) {
    run_cases({
        {"#if 1\na\n", {kError}, "main.ddl(3): error: End of file within conditional directive.\n"},
        {"#if 0\na\n#else\nb", {kError}, "main.ddl(4): error: End of file within conditional directive.\n"},
        {"#ifdef 1\n", {kError}, "main.ddl(1): error: Macro name must be a identifier.\n"},
    });
}

TEST(PreprocessorDirectives, LineEmptyAndUnknownDirectives) {
    run_cases({
        {"#line 10 \"f.ddl\"\na", {"a"}, "main.ddl(1): warning: Preprocessor directive 'line' is not implmented.\n"},
        {"#\na", {"a"}, ""},
        {"a\n#   \nb", {"a", "b"}, ""},
        {"#pragma once\nx", {kError, "once", "x"}, "main.ddl(1): error: Unknown preprocessor directive pragma.\n"},
        {"\n# 1\nx", {kError, "x"}, "main.ddl(2): error: Unknown preprocessor directive 1.\n"},
        {"#include <x>\ny", {kError, "x", ">", "y"}, "main.ddl(1): error: Include with '<>' are not implemented.\n"},
        {"#include x\ny", {kError, "y"}, "main.ddl(1): error: Error in include, no proper file given.\n"},
        // A stray endif is handed on as a directive token.
        {"a\n#endif\nb", {"a", "endif", "b"}, ""},
    });
}

TEST(PreprocessorPositions, ExpansionsKeepTheirSourceLines) {
    const Preprocessed result = preprocess(
        "#define A x\n"        // 1
        "#define F(a) [a]\n"   // 2
        "#define S(a) #a\n"    // 3
        "#define P(a,b) a##b\n"  // 4
        "A\n"                  // 5
        "F(\n"                 // 6
        "y)\n"                 // 7
        "S(q)\n"               // 8
        "P(\n"                 // 9
        "u,v) w");             // 10
    EXPECT_EQ(result.diagnostics, "");
    const std::vector<std::pair<std::string, int>> expected = {
        {"x", 1}, {"[", 2}, {"y", 7}, {"]", 2}, {"\"q\"", 3}, {"uv", 10}, {"w", 10},
    };
    ASSERT_EQ(result.tokens.size(), expected.size()) << ::testing::PrintToString(result.spellings());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(result.tokens[i].text(), expected[i].first);
        EXPECT_EQ(result.tokens[i].line(), expected[i].second) << expected[i].first;
        EXPECT_EQ(result.tokens[i].file_name(), "main.ddl") << expected[i].first;
    }
}

TEST(PreprocessorInclude, FirstIncludePathWithTheFileWins) {
    TempDir one, two;
    one.write("a.ddl", "first\n");
    two.write("a.ddl", "second\n");
    two.write("b.ddl", "only_two\n");
    const std::string main = "#include \"a.ddl\"\n#include \"b.ddl\"\nend";
    run_cases({{main, {"first", "only_two", "end"}, ""}}, {one.str(), two.str()});
    run_cases({{main, {"second", "only_two", "end"}, ""}}, {two.str(), one.str()});
}

TEST(PreprocessorInclude, MissingFileListsTheIncludePaths) {
    TempDir dir;
    run_cases({{"x\n#include \"nothere.ddl\"\ny",
                {"x", kError, "y"},
                "main.ddl(2): error: Could not find or read include file nothere.ddl.\nInclude path is:\n" +
                    dir.str() + "\nno/such/dir\n\n"}},
              {dir.str(), "no/such/dir"});
    run_cases({{"#include \"nothere.ddl\"\n",
                {kError},
                "main.ddl(1): error: Could not find or read include file nothere.ddl.\nInclude path is:\n\n"}});
}

TEST(PreprocessorInclude, DirectoryOfTheIncludingFileIsNotSearched) {
    TempDir dir;
    dir.write("sub/inner.ddl", "in\n#include \"leaf.ddl\"\n");
    dir.write("sub/leaf.ddl", "leaf\n");
    run_cases({{"#include \"sub/inner.ddl\"\nend",
                {"in", kError, "end"},
                dir.str() + "/sub/inner.ddl(2): error: Could not find or read include file leaf.ddl.\n"
                            "Include path is:\n" +
                    dir.str() + "\n\n"}},
              {dir.str()});
    // Through an include path it is found.
    dir.write("leaf.ddl", "top_leaf\n");
    run_cases({{"#include \"sub/inner.ddl\"\nend", {"in", "top_leaf", "end"}, ""}}, {dir.str()});
}

TEST(PreprocessorInclude, GuardsAllowRepeatedAndMutualIncludes) {
    TempDir dir;
    dir.write("guarded.ddl", "#ifndef GUARD\n#define GUARD\ng\n#endif\n");
    dir.write("plain.ddl", "p\n");
    dir.write("a.ddl", "#ifndef A_DDL\n#define A_DDL\na\n#include \"b.ddl\"\n#endif\n");
    dir.write("b.ddl", "#ifndef B_DDL\n#define B_DDL\nb\n#include \"a.ddl\"\n#endif\n");
    dir.write("defs.ddl", "#define FROM_INCLUDE 7\n");
    run_cases(
        {
            {"#include \"guarded.ddl\"\n#include \"guarded.ddl\"\nx", {"g", "x"}, ""},
            {"#include \"plain.ddl\"\n#include \"plain.ddl\"\nx", {"p", "p", "x"}, ""},
            {"#include \"a.ddl\"\n#include \"b.ddl\"\nend", {"a", "b", "end"}, ""},
            {"#include \"defs.ddl\"\nFROM_INCLUDE", {"7"}, ""},
        },
        {dir.str()});
}

TEST(PreprocessorInclude, SelfIncludeStopsAtTheNestingLimit) {
    TempDir dir;
    dir.write("self.ddl", "s\n#include \"self.ddl\"\n");
    const Preprocessed result = preprocess("#include \"self.ddl\"\nend", {dir.str()});
    EXPECT_EQ(result.diagnostics, dir.str() + "/self.ddl(2): error: Include nesting too deep.\n");
    Spellings expected(200, "s");  // 200 nested files are read, the 201st is refused
    expected.push_back(kError);
    expected.push_back("end");
    EXPECT_EQ(result.spellings(), expected);
}

TEST(PreprocessorInclude, IncludedTokensCarryTheirFileAndLine) {
    TempDir dir;
    dir.write("inc.ddl", "\n\ninc_a\n#define M m\ninc_b M\n");
    const Preprocessed result = preprocess("x\n#include \"inc.ddl\"\ny M", {dir.str()});
    EXPECT_EQ(result.diagnostics, "");
    const std::string inc = dir.str() + "/inc.ddl";
    const std::vector<std::tuple<std::string, std::string, int>> expected = {
        {"x", "main.ddl", 1}, {"inc_a", inc, 3}, {"inc_b", inc, 5}, {"m", inc, 4},
        {"y", "main.ddl", 3}, {"m", inc, 4},
    };
    ASSERT_EQ(result.tokens.size(), expected.size()) << ::testing::PrintToString(result.spellings());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const auto& [text, file, line] = expected[i];
        EXPECT_EQ(result.tokens[i].text(), text) << i;
        EXPECT_EQ(result.tokens[i].file_name(), file) << i;
        EXPECT_EQ(result.tokens[i].line(), line) << i;
    }
}

}  // namespace
}  // namespace edd
