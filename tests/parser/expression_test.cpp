// Expression trees as the parser builds them: right association at every binary level,
// prefix and postfix operators, the conditional operator, kept parentheses, strings and
// dictionary references, references and method calls, keyword combinations, and the
// failures of the expression grammar.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/reference_value.hpp"
#include "model/value_list.hpp"
#include "parse_helpers.hpp"

namespace edd {
namespace {

using namespace parse_test;

// The shape of `expression` given as the LABEL of a variable.
struct ParsedValue {
    Parsed parsed;
    std::string shape;
};

ParsedValue label_of(const std::string& expression) {
    ParsedValue result{parse_body("VARIABLE v { LABEL " + expression + "; }\n"), ""};
    if (result.parsed.has_attribute("v", AttributeId::LABEL))
        result.shape = shape(result.parsed.attribute("v", AttributeId::LABEL));
    return result;
}

void expect_clean_shapes(const std::vector<std::pair<std::string, std::string>>& cases) {
    for (const auto& [expression, expected] : cases) {
        SCOPED_TRACE(expression);
        const ParsedValue value = label_of(expression);
        EXPECT_EQ(value.shape, expected);
        EXPECT_EQ(value.parsed.diagnostics, "");
        EXPECT_TRUE(value.parsed.result);
    }
}

TEST(ExpressionTree, EveryBinaryOperatorGroupsToTheRight) {
    const std::vector<std::string> operators = {"||", "&&", "|", "^", "&", "==", "!=", "<", ">",
                                                "<=", ">=", "<<", ">>", "+", "-", "*", "/", "%"};
    std::vector<std::pair<std::string, std::string>> cases;
    for (const std::string& op : operators)
        cases.push_back({"a " + op + " b " + op + " c", "<@a " + op + " <@b " + op + " @c>>"});
    expect_clean_shapes(cases);
}

TEST(ExpressionTree, AssignmentsGroupToTheRight) {
    const std::vector<std::string> operators = {"=", "+=", "-=", "*=", "/=", "%=", "<<=", ">>=", "&=", "^=", "|="};
    std::vector<std::pair<std::string, std::string>> cases;
    for (const std::string& op : operators) cases.push_back({"a " + op + " b = c", "<@a " + op + " <@b = @c>>"});
    expect_clean_shapes(cases);
}

TEST(ExpressionTree, TighterLevelsBindFirst) {
    expect_clean_shapes({
        {"1 - 2 - 3", "<1 - <2 - 3>>"},
        {"a + b * c", "<@a + <@b * @c>>"},
        {"a * b + c", "<<@a * @b> + @c>"},
        {"a * b + c * d - e", "<<@a * @b> + <<@c * @d> - @e>>"},
        {"a - b * c - d", "<@a - <<@b * @c> - @d>>"},
        {"a || b && c | d ^ e & f", "<@a || <@b && <@c | <@d ^ <@e & @f>>>>>"},
        {"a & b ^ c | d && e || f", "<<<<<@a & @b> ^ @c> | @d> && @e> || @f>"},
        {"a == b < c << d + e", "<@a == <@b < <@c << <@d + @e>>>>"},
        {"a == b + c == d", "<@a == <<@b + @c> == @d>>"},
        {"a < b == c", "<<@a < @b> == @c>"},
        {"a = b || c", "<@a = <@b || @c>>"},
    });
}

TEST(ExpressionTree, PrefixAndPostfixOperators) {
    expect_clean_shapes({
        {"-x++", "<- <@x ++>>"},
        {"- - x", "<- <- @x>>"},
        {"!~x", "<! <~ @x>>"},
        {"++x", "<++ @x>"},
        {"--x", "<-- @x>"},
        {"+1", "<+ 1>"},
        {"x--", "<@x -->"},
        {"-a * b", "<<- @a> * @b>"},
        {"a - -b", "<@a - <- @b>>"},
    });
}

TEST(ExpressionTree, ConditionalOperatorHasFiveParts) {
    expect_clean_shapes({
        {"x ? 1 : 2", "<@x ? 1 : 2>"},
        {"a || b ? 1 : 2", "<<@a || @b> ? 1 : 2>"},
        {"x ? 1 : y ? 2 : 3", "<@x ? 1 : <@y ? 2 : 3>>"},
        {"x ? a = 1 : 2", "<@x ? <@a = 1> : 2>"},
        {"a = x ? 1 : 2", "<@a = <@x ? 1 : 2>>"},
    });
}

TEST(ExpressionTree, ParenthesesAreKeptAsThreeParts) {
    expect_clean_shapes({
        {"(a)", "<( @a )>"},
        {"(a - b) - c", "<<( <@a - @b> )> - @c>"},
        {"((1))", "<( <( 1 )> )>"},
        {"(1, 2)", "<( {1, 2} )>"},
    });
}

TEST(ExpressionTree, LiteralsAndTheirKinds) {
    struct Case {
        std::string source;
        ValueKind kind;
        std::string text;
    };
    const Case cases[] = {
        {"42", ValueKind::INTEGER, "42"},
        {"0x2A", ValueKind::INTEGER, "0x2A"},
        {"1.5e3", ValueKind::FLOAT, "1.5e3"},
        {"\"ab\" \"cd\"", ValueKind::STRING, "\"abcd\""},
        {"\"ab\"\n\"\" \"cd\"", ValueKind::STRING, "\"abcd\""},
        {"[my_key]", ValueKind::DICTIONARY_REFERENCE, "[my_key]"},
        {"READ_ONLY", ValueKind::KEYWORD, "READ_ONLY"},
        {"\"IF\"", ValueKind::STRING, "\"IF\""},  // a string never counts as the word it spells
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const ParsedValue value = label_of(c.source);
        ASSERT_TRUE(value.parsed.has_attribute("v", AttributeId::LABEL));
        const Value& label = value.parsed.attribute("v", AttributeId::LABEL);
        EXPECT_EQ(label.kind(), c.kind);
        EXPECT_EQ(label.to_string(), c.text);
        EXPECT_EQ(value.parsed.diagnostics, "");
    }
}

TEST(ExpressionTree, DictionaryKeyMayBeAReservedWordWithAWarning) {
    const ParsedValue value = label_of("[LABEL]");
    EXPECT_EQ(value.shape, "[LABEL]");
    EXPECT_EQ(value.parsed.diagnostics, warning_line(2, "LABEL is a reseved EDDL keyword."));
    EXPECT_TRUE(value.parsed.result);
}

TEST(ExpressionTree, DictionaryReferenceNeedsItsClosingBracket) {
    const ParsedValue value = label_of("[key");
    EXPECT_FALSE(value.parsed.result);
    EXPECT_EQ(value.parsed.diagnostics, error_line(2, "Expected ] but got ;"));
}

// A reference is named by its whole path as written; the index is its argument.
TEST(ExpressionReference, PathAndIndex) {
    struct Case {
        std::string source;
        std::string name;
        std::string argument;  // shape, empty when there is none
    };
    const Case cases[] = {
        {"a", "a", ""},
        {"a.b", "a.b", ""},
        {"a->b", "a->b", ""},
        {"a[3]", "a[3]", "3"},
        {"a[3]->b.c", "a[3]->b.c", "3"},
        {"a[i]", "a[i]", "@i"},
        {"a[i].b", "a[i].b", "@i"},
        {"a[b[1]]", "a[b[1]]", "@b[1](1)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const ParsedValue value = label_of(c.source);
        ASSERT_TRUE(value.parsed.has_attribute("v", AttributeId::LABEL));
        const Value& label = value.parsed.attribute("v", AttributeId::LABEL);
        ASSERT_EQ(label.kind(), ValueKind::REFERENCE);
        const auto& reference = static_cast<const ReferenceValue&>(label);
        EXPECT_EQ(reference.name(), c.name);
        EXPECT_EQ(reference.has_argument() ? shape(reference.argument()) : std::string(), c.argument);
        EXPECT_EQ(value.parsed.diagnostics, "");
    }
}

TEST(ExpressionReference, ReferencesTakePartInExpressions) {
    expect_clean_shapes({
        {"a[1] + b.c", "<@a[1](1) + @b.c>"},
        {"-a->b++", "<- <@a->b ++>>"},
    });
}

// A method call is a reference whose argument is the argument list.
TEST(ExpressionReference, MethodCalls) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"f()", "@f({})"},
        {"f(1)", "@f(1)"},
        {"f(1, a + b)", "@f({1, <@a + @b>})"},
        {"obj.get(x)", "@obj.get(@x)"},
        {"f(g(1))", "@f(@g(1))"},
        {"f() + 1", "<@f({}) + 1>"},
    };
    expect_clean_shapes(cases);
    const ParsedValue empty_call = label_of("f()");
    ASSERT_TRUE(empty_call.parsed.has_attribute("v", AttributeId::LABEL));
    const auto& call = static_cast<const ReferenceValue&>(empty_call.parsed.attribute("v", AttributeId::LABEL));
    EXPECT_EQ(call.kind(), ValueKind::REFERENCE);
    ASSERT_TRUE(call.has_argument());
    ASSERT_EQ(call.argument()->kind(), ValueKind::VALUE_LIST);
    const auto& arguments = static_cast<const ValueList&>(*call.argument());
    EXPECT_TRUE(arguments.empty());
    EXPECT_EQ(arguments.name(), "");
}

TEST(ExpressionKeywords, CombinationsWithAmpersandFormAList) {
    const ParsedValue single = label_of("LOCAL");
    EXPECT_EQ(single.shape, "LOCAL");
    const ParsedValue pair = label_of("LOCAL & DYNAMIC");
    EXPECT_EQ(pair.shape, "{LOCAL, DYNAMIC}");
    const ParsedValue three = label_of("LOCAL & DYNAMIC & DEVICE");
    EXPECT_EQ(three.shape, "{LOCAL, DYNAMIC, DEVICE}");
    ASSERT_TRUE(three.parsed.has_attribute("v", AttributeId::LABEL));
    const auto& list = static_cast<const ValueList&>(three.parsed.attribute("v", AttributeId::LABEL));
    for (const ValuePtr& entry : list.items()) EXPECT_EQ(entry->kind(), ValueKind::KEYWORD);
    EXPECT_EQ(three.parsed.diagnostics, "");
}

TEST(ExpressionKeywords, AmpersandMustBeFollowedByAKeyword) {
    const ParsedValue value = label_of("LOCAL & x");
    EXPECT_FALSE(value.parsed.result);
    EXPECT_EQ(value.parsed.diagnostics, error_line(2, "Expected keyword but got x"));
    EXPECT_FALSE(value.parsed.has("v"));
}

TEST(ExpressionList, BracedListsAndTheTrailingComma) {
    struct Case {
        std::string body;
        std::string shape;
        std::string diagnostics;
    };
    const Case cases[] = {
        {"LABEL { 1, 2 }", "{1, 2}", ""},
        {"LABEL { 1, 2, }", "{1, 2}", warning_line(2, "Trailing comma.")},
        {"LABEL { 1 }", "1", ""},
        {"LABEL 1, 2, 3;", "{1, 2, 3}", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.body);
        const Parsed parsed = parse_body("VARIABLE v { " + c.body + " }\n");
        ASSERT_TRUE(parsed.has_attribute("v", AttributeId::LABEL));
        EXPECT_EQ(shape(parsed.attribute("v", AttributeId::LABEL)), c.shape);
        EXPECT_EQ(parsed.diagnostics, c.diagnostics);
        EXPECT_TRUE(parsed.result);
    }
}

// "Expected primary expression but got" is followed by the token text without a blank;
// the token is left for the caller and the missing operand is an empty value.
TEST(ExpressionFailures, MissingOperandIsReportedAndNotConsumed) {
    struct Case {
        std::string label;
        std::string shape;
        std::string message;
    };
    const Case cases[] = {
        {"1 +", "<1 + null>", "Expected primary expression but got;"},
        {"", "null", "Expected primary expression but got;"},
        {"- ", "<- null>", "Expected primary expression but got;"},
        {"f(1, )", "@f({1, null})", "Expected primary expression but got)"},
        // Only "}" makes a comma a trailing one.
        {"1, 2,", "{1, 2, null}", "Expected primary expression but got;"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        // The ";" that the operand did not take still ends the value, so HELP is read.
        const Parsed parsed = parse_body("VARIABLE v {\n    LABEL " + c.label + ";\n    HELP \"h\";\n}\n");
        EXPECT_FALSE(parsed.result);
        EXPECT_EQ(parsed.errors, 1);
        EXPECT_EQ(parsed.diagnostics, error_line(3, c.message));
        ASSERT_TRUE(parsed.has_attribute("v", AttributeId::LABEL));
        EXPECT_EQ(shape(parsed.attribute("v", AttributeId::LABEL)), c.shape);
        EXPECT_TRUE(parsed.has_attribute("v", AttributeId::HELP));
    }
}

TEST(ExpressionFailures, MissingClosersAreFatal) {
    struct Case {
        std::string label;
        std::string message;
    };
    const Case cases[] = {
        {"x ? 1 ;", "Expected : but got ;"},
        {"(a ;", "Expected ) but got ;"},
        {"f(1 ;", "Expected ) but got ;"},
        {"a[1 ;", "Expected ] but got ;"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const Parsed parsed = parse_body("VARIABLE v { LABEL " + c.label + " }\nVARIABLE w { }\n");
        EXPECT_FALSE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, error_line(2, c.message));
        EXPECT_EQ(parsed.errors, 1);
        EXPECT_TRUE(parsed.description.items.empty());
    }
}

// An index is a nested reference or an integer; anything after the integer must be "]".
TEST(ExpressionFailures, IndexIsAReferenceOrAnInteger) {
    const ParsedValue value = label_of("a[1 + 2]");
    EXPECT_FALSE(value.parsed.result);
    EXPECT_EQ(value.parsed.diagnostics, error_line(2, "Expected ] but got +"));
}

// Hostile nesting ends with one fatal report instead of exhausting the stack.
TEST(ExpressionFailures, DeepNestingEndsTheParse) {
    const std::size_t depth = 100000;
    auto repeat = [](const std::string& piece, std::size_t count) {
        std::string text;
        text.reserve(piece.size() * count);
        for (std::size_t i = 0; i < count; ++i) text += piece;
        return text;
    };
    const std::pair<std::string, std::string> cases[] = {
        {"parentheses", repeat("(", depth) + "1"},
        {"prefix operators", repeat("-", depth) + "1"},
        {"bang operators", repeat("!", depth) + "1"},
        {"calls", repeat("f(", depth) + "1"},
        {"conditionals", repeat("IF (x) { ", depth) + "1"},
    };
    for (const auto& [name, value] : cases) {
        SCOPED_TRACE(name);
        const Parsed parsed = parse_body("VARIABLE v { LABEL " + value + " }\n");
        EXPECT_FALSE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, error_line(2, "Nesting too deep."));
        EXPECT_EQ(parsed.errors, 1);
    }
}

TEST(ExpressionTree, ModerateNestingIsFine) {
    std::string open(200, '(');
    std::string close(200, ')');
    const ParsedValue value = label_of(open + "1" + close);
    EXPECT_TRUE(value.parsed.result);
    EXPECT_EQ(value.parsed.diagnostics, "");
    std::string expected = "1";
    for (int i = 0; i < 200; ++i) expected = "<( " + expected + " )>";
    EXPECT_EQ(value.shape, expected);
}

}  // namespace
}  // namespace edd
