// The EDDL-like text of every kind of value, nested values included, and the printed
// names of value kinds.
#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/conditionals.hpp"
#include "model/expression.hpp"
#include "model/parameter_value.hpp"
#include "model/reference_value.hpp"
#include "model/type_value.hpp"
#include "model_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;

ValuePtr if_value(const ValuePtr& condition, const ValuePtr& then_value) {
    auto value = make_value<IfConditional>();
    auto& conditional = static_cast<IfConditional&>(*value);
    conditional.set_condition(condition);
    conditional.set_then(then_value);
    return value;
}

ValuePtr if_else_value(const ValuePtr& condition, const ValuePtr& then_value, const ValuePtr& else_value) {
    ValuePtr value = if_value(condition, then_value);
    static_cast<IfConditional&>(*value).set_else(else_value);
    return value;
}

ValuePtr select_value(const ValuePtr& selector, const std::vector<std::pair<ValuePtr, ValuePtr>>& cases) {
    auto value = make_value<SelectConditional>();
    auto& select = static_cast<SelectConditional&>(*value);
    select.set_selector(selector);
    for (const auto& [label, branch] : cases) select.add_case(label, branch);
    return value;
}

std::string streamed(const Value& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

TEST(ValueKindText, NamesStopAtMethodCallAndLaterCodesPrintAsNumbers) {
    const std::pair<std::uint32_t, std::string> cases[] = {
        {0, "UNDEFINED"},   {2, "DICTIONARY_REFERENCE"}, {11, "SELECT_CONDITIONAL"}, {16, "METHOD_CALL"},
        {17, "17"},         {18, "18"},                  {19, "19"},                 {20, "20"},
    };
    for (const auto& [code, printed] : cases) {
        SCOPED_TRACE(code);
        const auto kind = static_cast<ValueKind>(code);
        EXPECT_EQ(to_string(kind), printed);
        std::ostringstream out;
        out << kind;
        EXPECT_EQ(out.str(), printed);
    }
}

TEST(ValueKindText, ParameterAndCaseValuesReportNumberedKinds) {
    std::ostringstream out;
    out << ParameterValue(2, 0, "x").kind() << ' ' << SelectConditional::Case(integer("1"), str("one")).kind() << ' '
        << simple(ValueKind::DATA_MASK, "0x0F")->kind();
    EXPECT_EQ(out.str(), "18 19 17");
}

TEST(ValueRendering, SimpleValuesQuoteStringsAndBracketDictionaryReferencesOnly) {
    const std::pair<ValuePtr, std::string> cases[] = {
        {str("plain"), "\"plain\""},
        {str("say \"hi\"\n"), "\"say \"hi\"\n\""},  // not escaped
        {str(""), "\"\""},
        {dict("label_key"), "[label_key]"},
        {integer("0x1F"), "0x1F"},
        {simple(ValueKind::FLOAT, "1.5e3"), "1.5e3"},
        {keyword("READ_WRITE"), "READ_WRITE"},
        {ident("pressure"), "pressure"},
        {op("<<"), "<<"},
        {simple(ValueKind::DATA_MASK, "0xF0"), "0xF0"},
        {make_value<NullValue>(), ""},
    };
    for (const auto& [value, text] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(value->to_string(), text);
        EXPECT_EQ(streamed(*value), text);
    }
}

TEST(ValueRendering, ListsJoinItemsWithCommaBlankAndNoBrackets) {
    EXPECT_EQ(ValueList().to_string(), "");
    EXPECT_EQ(list_of(ident("a"))->to_string(), "a");
    EXPECT_EQ(list_of(ident("a"), str("b"), dict("c"))->to_string(), "a, \"b\", [c]");
    // A nested list flattens into the same run of items.
    EXPECT_EQ(list_of(ident("a"), list_of(ident("b"), ident("c")), ident("d"))->to_string(), "a, b, c, d");

    const ValuePtr list = list_of(integer("1"), integer("2"));
    std::ostringstream out;
    as_list(list).print_to(out);
    EXPECT_EQ(out.str(), "1, 2");
    EXPECT_EQ(streamed(*list), "1, 2");
}

TEST(ValueRendering, ReferencesAppendTheirArgumentInParentheses) {
    ReferenceValue plain("pressure");
    EXPECT_EQ(plain.to_string(), "pressure");

    ReferenceValue indexed("table");
    indexed.set_argument(integer("3"));
    EXPECT_EQ(indexed.to_string(), "table(3)");

    ReferenceValue computed("table");
    computed.set_argument(make_value<Expression>(ident("i"), op("+"), integer("1")));
    EXPECT_EQ(computed.to_string(), "table(i + 1 )");
}

TEST(ValueRendering, TypesListAttributesByNameThenValuesEachFollowedByIndentedBreak) {
    EXPECT_EQ(TypeValue().to_string(), "UNKNOWN(0)\n{\n\n}");
    EXPECT_EQ(TypeValue("INTEGER", 4).to_string(), "INTEGER(4)\n{\n\n}");

    TypeValue type("ENUMERATED", 1);
    type.set_attribute(Attribute("MIN_VALUE", integer("0")));
    type.set_attribute(Attribute("DISPLAY_FORMAT", str("3d")));
    auto entry = make_value<ComposedValue>("enumerator");
    static_cast<ComposedValue&>(*entry).set("value", integer("1"));
    static_cast<ComposedValue&>(*entry).set("description", dict("one"));
    type.add_value(entry);
    type.add_value(ident("other"));
    EXPECT_EQ(type.to_string(),
              "ENUMERATED(1)\n{\n"
              "DISPLAY_FORMAT \"3d\"\n        "
              "MIN_VALUE 0\n        "
              "{1, [one]}\n        "
              "other\n        "
              "\n}");

    type.set_size(2);
    type.set_attribute(Attribute("MIN_VALUE", integer("-5")));  // replaces, keeps one entry
    EXPECT_EQ(type.to_string(),
              "ENUMERATED(2)\n{\n"
              "DISPLAY_FORMAT \"3d\"\n        "
              "MIN_VALUE -5\n        "
              "{1, [one]}\n        "
              "other\n        "
              "\n}");
}

TEST(ValueRendering, ComposedValuesBraceTheirAttributeValuesInListOrder) {
    EXPECT_EQ(ComposedValue("element").to_string(), "{}");

    ComposedValue element("element");
    element.set("element_index", integer("1"));
    element.set("element_reference", ident("pressure"));
    element.set("description", dict("pressure_desc"));
    EXPECT_EQ(element.to_string(), "{1, pressure, [pressure_desc]}");

    element.set("element_index", integer("7"));  // same name: position kept
    EXPECT_EQ(element.to_string(), "{7, pressure, [pressure_desc]}");
}

TEST(ValueRendering, IfEndsWithoutLineBreakAndElseFollowsTheClosingBrace) {
    EXPECT_EQ(IfConditional().to_string(), "IF () {\n    \n}");
    EXPECT_EQ(if_value(ident("ready"), str("yes"))->to_string(), "IF (ready) {\n    \"yes\"\n}");
    EXPECT_EQ(if_else_value(ident("ready"), str("yes"), str("no"))->to_string(),
              "IF (ready) {\n    \"yes\"\n}ELSE {\n    \"no\"\n}");

    const ValuePtr condition = make_value<Expression>(ident("mode"), op("=="), integer("1"));
    EXPECT_EQ(if_value(condition, keyword("TRUE"))->to_string(), "IF (mode == 1 ) {\n    TRUE\n}");
}

TEST(ValueRendering, SelectEndsWithLineBreak) {
    EXPECT_EQ(SelectConditional().to_string(), "SELECT () {\n}\n");
    EXPECT_EQ(select_value(ident("unit"), {})->to_string(), "SELECT (unit) {\n}\n");

    ValuePtr select = select_value(ident("unit"), {{integer("1"), str("bar")}, {integer("2"), str("psi")}});
    EXPECT_EQ(select->to_string(),
              "SELECT (unit) {\n"
              "    CASE 1:\n        \"bar\"\n"
              "    CASE 2:\n        \"psi\"\n"
              "}\n");

    static_cast<SelectConditional&>(*select).set_default(dict("unknown_unit"));
    EXPECT_EQ(select->to_string(),
              "SELECT (unit) {\n"
              "    CASE 1:\n        \"bar\"\n"
              "    CASE 2:\n        \"psi\"\n"
              "    DEFAULT:\n        [unknown_unit]\n"
              "}\n");

    EXPECT_EQ(SelectConditional::Case(integer("1"), str("bar")).to_string(), "");
}

TEST(ValueRendering, NestedConditionalsKeepTheirOwnLineStarts) {
    const ValuePtr inner_if = if_else_value(ident("b"), ident("x"), ident("y"));
    const ValuePtr inner_select = select_value(ident("s"), {{integer("1"), ident("z")}});
    const std::pair<ValuePtr, std::string> cases[] = {
        {if_value(ident("a"), inner_if), "IF (a) {\n    IF (b) {\n    x\n}ELSE {\n    y\n}\n}"},
        {if_else_value(ident("a"), ident("w"), inner_select),
         "IF (a) {\n    w\n}ELSE {\n    SELECT (s) {\n    CASE 1:\n        z\n}\n\n}"},
        {select_value(ident("s"), {{integer("0"), inner_if}}),
         "SELECT (s) {\n    CASE 0:\n        IF (b) {\n    x\n}ELSE {\n    y\n}\n}\n"},
        // Inside a list the IF text runs straight into the separator; the SELECT text puts
        // the separator at the start of a new line.
        {list_of(ident("first"), inner_if, ident("last")), "first, IF (b) {\n    x\n}ELSE {\n    y\n}, last"},
        {list_of(inner_select, ident("last")), "SELECT (s) {\n    CASE 1:\n        z\n}\n, last"},
        {list_of(if_value(ident("c"), list_of(ident("p"), ident("q")))), "IF (c) {\n    p, q\n}"},
    };
    for (const auto& [value, text] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(value->to_string(), text);
    }
}

TEST(ValueRendering, ExpressionsFollowEveryPartWithABlank) {
    const ValuePtr sum = make_value<Expression>(ident("a"), op("+"), ident("b"));
    const std::pair<ValuePtr, std::string> cases[] = {
        {make_value<Expression>(op("-"), ident("x")), "- x "},
        {make_value<Expression>(ident("i"), op("++")), "i ++ "},
        {sum, "a + b "},
        {make_value<Expression>(op("("), sum, op(")")), "( a + b  ) "},
        {make_value<Expression>(ident("c"), op("?"), integer("1"), op(":"), integer("2")), "c ? 1 : 2 "},
        {make_value<Expression>(str("s"), op("=="), dict("k")), "\"s\" == [k] "},
    };
    for (const auto& [value, text] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(value->to_string(), text);
    }
}

TEST(ValueRendering, ParametersPrintTypeThenAmpersandOnlyForCallByReference) {
    struct Case {
        std::uint32_t type;
        std::uint32_t mode;
        std::string text;
    };
    const Case cases[] = {
        {2, 1, "int& x"},
        {2, 0, "int x"},
        {0, 0, "char x"},
        {1, 1, "unsigned char& x"},
        {5, 0, "unsigned long x"},
        {7, 0, "double x"},
        {8, 1, "DD_STRING& x"},
        {9, 0, "DD_ITEM x"},
        {10, 0, "10 x"},  // past the table: the number
        {2, 2, "int x"},   // an unknown mode prints like by-value
        {4, 7, "long x"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(ParameterValue(c.type, c.mode, "x").to_string(), c.text);
    }
}

TEST(ValueRendering, CodeFromTokensSeparatesAndRequotesElseShowsItsText) {
    const std::vector<Token> body = {ident_token("label"), punct('='), string_token("a \"b\""), punct(';'),
                                     ident_token("x"), punct('='), punct('['), ident_token("key"), punct(']')};
    EXPECT_EQ(CodeValue(body).to_string(), "label = \"a \"b\"\" ; x = [ key ] ");
    EXPECT_EQ(CodeValue("{ x = 1; }").to_string(), "{ x = 1; }");
    EXPECT_EQ(CodeValue(std::vector<Token>{}).to_string(), "");
    EXPECT_EQ(CodeValue().to_string(), "");
}

TEST(TokenRendering, FlagsChooseQuotingAndSeparation) {
    const std::vector<Token> tokens = {ident_token("s"), punct('='), string_token("two words"), punct(';')};
    struct Case {
        bool quote;
        bool separate;
        std::string text;
    };
    const Case cases[] = {
        {false, false, "s=two words;"},
        {true, false, "s=\"two words\";"},
        {false, true, "s = two words ; "},
        {true, true, "s = \"two words\" ; "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(render_tokens(tokens, c.quote, c.separate), c.text);
    }
    EXPECT_EQ(render_tokens({}, true, true), "");
    // Only string literals are quoted, whatever their text looks like.
    EXPECT_EQ(render_tokens({Token(INTEGER, "1"), Token(EDDL_KEYWORD, "HELP")}, true, false), "1HELP");
}

}  // namespace
}  // namespace edd
