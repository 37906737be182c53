// The conditional template (IF/ELSE and SELECT with CASE and DEFAULT) and the list template
// with its stray-comma check: the values built, the warnings and errors, what is fatal, and
// nesting.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "parse_helpers.hpp"

namespace edd {
namespace {

using namespace parse_test;

struct Case {
    std::string body;  // the statements of a VARIABLE v, all on line 2
    std::string shape;
    std::string diagnostics;
};

void expect_attribute(AttributeId id, const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.body);
        const Parsed parsed = parse_body("VARIABLE v { " + c.body + " }\n");
        EXPECT_EQ(parsed.diagnostics, c.diagnostics);
        ASSERT_TRUE(parsed.has_attribute("v", id));
        EXPECT_EQ(shape(parsed.attribute("v", id)), c.shape);
        EXPECT_EQ(parsed.errors, 0);
        EXPECT_TRUE(parsed.result);
    }
}

TEST(ConditionalIf, ShapesAndWarnings) {
    const std::string trailing = warning_line(2, "Trailing semicolon.");
    expect_attribute(AttributeId::LABEL, {
        {"LABEL IF (x) { \"a\" }", "IF(@x){\"a\"}", ""},
        {"LABEL IF (x) { \"a\" } ELSE { \"b\" }", "IF(@x){\"a\"}ELSE{\"b\"}", ""},
        {"LABEL IF (x) { \"a\" } ELSE { }", "IF(@x){\"a\"}ELSE{null}", warning_line(2, "Empty ELSE clause.")},
        {"LABEL IF (x, y) { 1 }", "IF({@x, @y}){1}", ""},
        {"LABEL IF (a == 1) { IF (b) { 1 } ELSE { 2 } } ELSE { 3 }", "IF(<@a == 1>){IF(@b){1}ELSE{2}}ELSE{3}", ""},
        {"LABEL IF (x) { IF (y) { 1 } } ELSE { 2 }", "IF(@x){IF(@y){1}}ELSE{2}", ""},
        // Inside a branch of the generic value the value itself takes the ";".
        {"LABEL IF (x) { \"a\"; }", "IF(@x){\"a\"}", ""},
        {"LABEL IF (x) { \"a\"; } ELSE { \"b\"; }", "IF(@x){\"a\"}ELSE{\"b\"}", ""},
        // After the ELSE branch the ";" is the conditional's own.
        {"LABEL IF (x) { \"a\" } ELSE { \"b\" };", "IF(@x){\"a\"}ELSE{\"b\"}", trailing},
    });
}

// Keyword lists do not take a ";" themselves, so there it belongs to the branch.
TEST(ConditionalIf, TrailingSemicolonInsideBranches) {
    const std::string trailing = warning_line(2, "Trailing semicolon.");
    expect_attribute(AttributeId::PURPOSE, {
        {"PURPOSE IF (x) { DIAGNOSE; }", "IF(@x){DIAGNOSE}", trailing},
        {"PURPOSE IF (x) { DIAGNOSE; } ELSE { TABLE; };", "IF(@x){DIAGNOSE}ELSE{TABLE}", trailing + trailing + trailing},
        {"PURPOSE SELECT (x) { CASE 1: DIAGNOSE; DEFAULT: TABLE; };", "SELECT(@x){CASE 1:DIAGNOSE DEFAULT:TABLE}",
         trailing + trailing + trailing},
        {"PURPOSE IF (x) { IF (y) { DIAGNOSE; } }", "IF(@x){IF(@y){DIAGNOSE}}", trailing},
    });
}

TEST(ConditionalIf, EmptyThenBranchFailsAsTheValueFails) {
    const Parsed parsed = parse_body("VARIABLE v { LABEL IF (x) { } HELP \"h\"; }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, error_line(2, "Expected primary expression but got}"));
    EXPECT_EQ(parsed.errors, 1);
    EXPECT_EQ(shape(parsed.attribute("v", AttributeId::LABEL)), "IF(@x){null}");
    EXPECT_TRUE(parsed.has_attribute("v", AttributeId::HELP));
}

// The conditional leaves a ";" after an IF without ELSE alone; the next statement then
// takes it for an attribute name.
TEST(ConditionalIf, SemicolonAfterIfWithoutElseIsLeftToTheNextStatement) {
    const Parsed parsed = parse_body("VARIABLE v { LABEL IF (x) { \"a\" }; }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.diagnostics,
              error_line(2, "Expected identifier but got ;") + error_line(2, " is not a valid attribute id"));
    EXPECT_EQ(parsed.errors, 2);
}

TEST(ConditionalSelect, ShapesAndWarnings) {
    expect_attribute(AttributeId::LABEL, {
        {"LABEL SELECT (x) { CASE 1: a CASE 2: b }", "SELECT(@x){CASE 1:@a CASE 2:@b}", ""},
        {"LABEL SELECT (x) { CASE 1: a; DEFAULT: b; }", "SELECT(@x){CASE 1:@a DEFAULT:@b}", ""},
        {"LABEL SELECT (x) { DEFAULT: b CASE 1: a CASE 2: c }", "SELECT(@x){CASE 1:@a CASE 2:@c DEFAULT:@b}", ""},
        {"LABEL SELECT (x) { }", "SELECT(@x){}", ""},
        {"LABEL SELECT (x + 1) { CASE 1, 2: a }", "SELECT(<@x + 1>){CASE {1, 2}:@a}", ""},
        {"LABEL SELECT (x) { CASE 1: \"a\" };", "SELECT(@x){CASE 1:\"a\"}", warning_line(2, "Trailing semicolon.")},
        {"LABEL SELECT (x) { CASE 1: IF (y) { 1 } ELSE { 2 } CASE 2: SELECT (z) { DEFAULT: 3 } }",
         "SELECT(@x){CASE 1:IF(@y){1}ELSE{2} CASE 2:SELECT(@z){DEFAULT:3}}", ""},
    });
}

TEST(ConditionalSelect, SecondDefaultIsAnErrorAndWins) {
    const Parsed parsed = parse_body("VARIABLE v { LABEL SELECT (x) { DEFAULT: 1 CASE 2: b DEFAULT: 3 } HELP \"h\"; }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, error_line(2, "Select has can only have one default value."));
    EXPECT_EQ(parsed.errors, 1);
    EXPECT_EQ(shape(parsed.attribute("v", AttributeId::LABEL)), "SELECT(@x){CASE 2:@b DEFAULT:3}");
    EXPECT_TRUE(parsed.has_attribute("v", AttributeId::HELP));  // the parse goes on
}

// A token that is neither CASE nor DEFAULT is reported once, and the parse ends there.
TEST(ConditionalSelect, StrayTokenIsReportedOnceAndEndsTheParse) {
    struct Stray {
        std::string select;
        std::string token;
    };
    const Stray cases[] = {
        {"SELECT (x) { CASE 1: a b CASE 2: c }", "b"},
        {"SELECT (x) { CASE 1: \"a\"; ] }", "]"},
        {"SELECT (x) { ELSE }", "ELSE"},
        {"SELECT (x) { CASE 1: a ) }", ")"},
    };
    for (const Stray& c : cases) {
        SCOPED_TRACE(c.select);
        const Parsed parsed = parse_body("VARIABLE before { }\nVARIABLE v { LABEL " + c.select +
                                         " }\nVARIABLE after { LABLE 1; }\n");
        EXPECT_FALSE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, error_line(3, "Expected 'CASE' or 'DEFAULT' but got '" + c.token + "'."));
        EXPECT_EQ(parsed.errors, 1);
        EXPECT_EQ(parsed.item_names(), std::vector<std::string>{"before"});
    }
}

TEST(ConditionalFailures, MissingPunctuationIsFatal) {
    struct Failure {
        std::string value;
        std::string message;
    };
    const Failure cases[] = {
        {"IF x", "Expected ( but got x"},
        {"IF (x { 1 }", "Expected ) but got {"},
        {"IF (x) 1", "Expected { but got 1"},
        {"IF (x) { 1 ELSE", "Expected } but got ELSE"},
        {"IF (x) { 1 } ELSE 2", "Expected { but got 2"},
        {"IF (x) { 1 } ELSE { 2 ", "Expected } but got HELP"},
        {"SELECT x", "Expected ( but got x"},
        {"SELECT (x) CASE", "Expected { but got CASE"},
        {"SELECT (x) { CASE 1 a }", "Expected : but got a"},
        {"SELECT (x) { DEFAULT 1 }", "Expected : but got 1"},
    };
    for (const Failure& c : cases) {
        SCOPED_TRACE(c.value);
        const Parsed parsed = parse_body("VARIABLE v { LABEL " + c.value + " HELP \"h\"; }\n");
        EXPECT_FALSE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, error_line(2, c.message));
        EXPECT_EQ(parsed.errors, 1);
        EXPECT_TRUE(parsed.description.items.empty());
    }
}

// IF inside CASE inside IF ..., alternating, 60 levels deep.
TEST(ConditionalNesting, BranchesNestToDepth) {
    const int depth = 60;
    std::string source = "0";
    std::string expected = "0";
    for (int level = depth; level > 0; --level) {
        const std::string n = std::to_string(level);
        if (level % 2 == 0) {
            source = "IF (c" + n + ") { " + source + " } ELSE { " + n + " }";
            expected = "IF(@c" + n + "){" + expected + "}ELSE{" + n + "}";
        } else {
            source = "SELECT (s" + n + ") { CASE " + n + ": " + source + " DEFAULT: " + n + " }";
            expected = "SELECT(@s" + n + "){CASE " + n + ":" + expected + " DEFAULT:" + n + "}";
        }
    }
    expect_attribute(AttributeId::LABEL, {{"LABEL " + source, expected, ""}});
}

TEST(ConditionalList, SingleEntryListsAndStrayCommas) {
    const std::string stray = warning_line(2, "Stray ,");
    expect_attribute(AttributeId::PURPOSE, {
        {"PURPOSE DIAGNOSE;", "DIAGNOSE", ""},
        {"PURPOSE DIAGNOSE, TABLE;", "{DIAGNOSE, TABLE}", ""},
        {"PURPOSE DIAGNOSE, TABLE, MENU", "{DIAGNOSE, TABLE, MENU}", ""},
        {"PURPOSE DIAGNOSE, TABLE,", "{DIAGNOSE, TABLE}", stray},
        {"PURPOSE DIAGNOSE,", "{DIAGNOSE}", stray},
        {"PURPOSE SELECT (s) { CASE 1: DIAGNOSE, CASE 2: TABLE, MENU, }",
         "SELECT(@s){CASE 1:{DIAGNOSE} CASE 2:{TABLE, MENU}}", stray + stray},
        {"PURPOSE IF (x) { DIAGNOSE, } ELSE { TABLE }", "IF(@x){{DIAGNOSE}}ELSE{TABLE}", stray},
    });
}

// A comma before IF or SELECT ends the list as well; the conditional that follows is then
// no part of the value and the next statement meets it.
TEST(ConditionalList, CommaBeforeAConditionalEndsTheList) {
    const Parsed parsed = parse_body("VARIABLE v { PURPOSE DIAGNOSE, IF (x) { TABLE } }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, warning_line(2, "Stray ,") + error_line(2, "IF is not a valid attribute id"));
}

}  // namespace
}  // namespace edd
