// Equality of values: structural for some kinds, identity for list items, never for others,
// and the IF comparison that needs an ELSE on both sides.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/attribute.hpp"
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

TEST(ValueEquality, SimpleValuesCompareKindAndExactText) {
    struct Case {
        ValuePtr a;
        ValuePtr b;
        bool equal;
    };
    const Case cases[] = {
        {str("x"), str("x"), true},
        {dict("k"), dict("k"), true},
        {simple(ValueKind::DATA_MASK, "3"), simple(ValueKind::DATA_MASK, "3"), true},
        {str("x"), str("X"), false},
        {str("x"), ident("x"), false},
        {integer("1"), simple(ValueKind::FLOAT, "1"), false},
        {integer("1"), integer("01"), false},
        {ident("x"), make_value<ReferenceValue>("x"), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.a->to_string() + " / " + c.b->to_string());
        EXPECT_EQ(*c.a == *c.b, c.equal);
        EXPECT_EQ(*c.a != *c.b, !c.equal);
        EXPECT_EQ(*c.b == *c.a, c.equal);
    }
}

TEST(ValueEquality, NullValueEqualsAnyUndefinedKind) {
    const NullValue null;
    EXPECT_TRUE(null == NullValue());
    EXPECT_TRUE(null == *simple(ValueKind::UNDEFINED, "anything"));
    EXPECT_FALSE(null == *str(""));
    EXPECT_FALSE(null == ValueList());
}

TEST(ValueEquality, ListsEqualOnlyWhenTheyHoldTheVerySameItems) {
    const ValuePtr list = list_of(ident("a"), ident("b"));
    EXPECT_TRUE(*list == *list);
    EXPECT_FALSE(*list == *list->clone());                        // the clone has new items
    EXPECT_FALSE(*list == *list_of(ident("a"), ident("b")));      // built twice alike
    EXPECT_FALSE(*list == *list_of(ident("a")));
    EXPECT_FALSE(*list == *ident("a"));
    // With no items there is nothing to tell apart; the name is not compared.
    EXPECT_TRUE(ValueList("one") == ValueList("other"));
    EXPECT_TRUE(ValueList() == *ValueList().clone());
}

TEST(ValueEquality, SomeKindsNeverEqualAnythingNotEvenThemselves) {
    ComposedValue composed("element");
    composed.set("element_index", integer("1"));
    SelectConditional select;
    select.set_selector(ident("s"));
    select.add_case(integer("1"), ident("x"));
    select.set_default(ident("y"));
    const std::pair<const char*, ValuePtr> cases[] = {
        {"reference", make_value<ReferenceValue>("r")},
        {"composed", composed.clone()},
        {"empty composed", make_value<ComposedValue>()},
        {"expression", make_value<Expression>(ident("a"), op("+"), ident("b"))},
        {"select", select.clone()},
        {"empty select", make_value<SelectConditional>()},
        {"case", make_value<SelectConditional::Case>(integer("1"), ident("x"))},
    };
    for (const auto& [name, value] : cases) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(*value == *value);
        EXPECT_TRUE(*value != *value);
        EXPECT_FALSE(*value == *value->clone());
    }
}

TEST(ValueEquality, TypesCompareNameSizeAndAttributesButNotValues) {
    auto type = [](std::string name, std::uint32_t size, std::string min, std::vector<ValuePtr> values) {
        TypeValue value(std::move(name), size);
        value.set_attribute(Attribute("MIN_VALUE", integer(std::move(min))));
        for (const ValuePtr& v : values) value.add_value(v);
        return value;
    };
    const TypeValue base = type("INTEGER", 4, "0", {ident("a")});
    EXPECT_TRUE(base == type("INTEGER", 4, "0", {ident("a")}));
    EXPECT_TRUE(base == type("INTEGER", 4, "0", {ident("b"), ident("c")}));
    EXPECT_TRUE(base == type("INTEGER", 4, "0", {}));
    EXPECT_FALSE(base == type("UNSIGNED_INTEGER", 4, "0", {ident("a")}));
    EXPECT_FALSE(base == type("INTEGER", 2, "0", {ident("a")}));
    EXPECT_FALSE(base == type("INTEGER", 4, "1", {ident("a")}));

    TypeValue more = type("INTEGER", 4, "0", {});
    more.set_attribute(Attribute("MAX_VALUE", integer("9")));
    EXPECT_FALSE(base == more);
    EXPECT_FALSE(more == base);

    TypeValue renamed("INTEGER", 4);
    renamed.set_attribute(Attribute("MAX_VALUE", integer("0")));
    EXPECT_FALSE(base == renamed);

    EXPECT_FALSE(base == *simple(ValueKind::TYPE, "INTEGER"));
}

TEST(ValueEquality, TypeAttributesCompareWithValueEquality) {
    // An attribute value that never compares equal makes the type unequal to itself.
    TypeValue type("INTEGER", 4);
    type.set_attribute(Attribute("DEFAULT_VALUE", make_value<Expression>(integer("1"), op("+"), integer("2"))));
    EXPECT_FALSE(type == type);

    // Lists as attribute values are cloned into the type, so two types never share them.
    TypeValue a("ENUMERATED", 1);
    a.set_attribute(Attribute("MIN_VALUE", list_of(integer("0"))));
    EXPECT_FALSE(a == *a.clone());
}

IfConditional make_if(const ValuePtr& condition, const ValuePtr& then_value) {
    IfConditional value;
    value.set_condition(condition);
    value.set_then(then_value);
    return value;
}

IfConditional make_if(const ValuePtr& condition, const ValuePtr& then_value, const ValuePtr& else_value) {
    IfConditional value = make_if(condition, then_value);
    value.set_else(else_value);
    return value;
}

TEST(ValueEquality, IfComparesConditionThenElseInOrder) {
    const IfConditional full = make_if(ident("c"), str("t"), str("e"));
    EXPECT_TRUE(full == make_if(ident("c"), str("t"), str("e")));
    EXPECT_TRUE(full == full);
    EXPECT_FALSE(full == make_if(ident("d"), str("t"), str("e")));
    EXPECT_FALSE(full == make_if(ident("c"), str("u"), str("e")));
    EXPECT_FALSE(full == make_if(ident("c"), str("t"), str("f")));
    EXPECT_FALSE(full == *ident("c"));

    // Conditions as the parser builds them are expressions, which never compare equal.
    const ValuePtr condition = make_value<Expression>(ident("x"), op(">"), integer("0"));
    const IfConditional parsed = make_if(condition, str("t"), str("e"));
    EXPECT_FALSE(parsed == parsed);
}

TEST(ValueEquality, IfWithoutElseThrowsOnceConditionAndThenMatch) {
    const IfConditional full = make_if(ident("c"), str("t"), str("e"));
    const IfConditional no_else = make_if(ident("c"), str("t"));
    struct Case {
        const char* name;
        const IfConditional* a;
        IfConditional b;
        std::string outcome;
    };
    const Case cases[] = {
        {"without ELSE on the right", &full, make_if(ident("c"), str("t")), "NullPointer"},
        {"without ELSE on the left", &no_else, make_if(ident("c"), str("t"), str("e")), "NullPointer"},
        {"without ELSE on both sides", &no_else, make_if(ident("c"), str("t")), "NullPointer"},
        // Comparison stops at the first unequal pair, before the missing ELSE is reached.
        {"condition differs first", &no_else, make_if(ident("other"), str("t")), "nothing"},
        {"then differs first", &no_else, make_if(ident("c"), str("other")), "nothing"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(outcome([&] { (void)(*c.a == c.b); }), c.outcome);
    }
    EXPECT_EQ(outcome([&] { (void)(no_else == no_else); }), "NullPointer");
    EXPECT_EQ(outcome([&] { EXPECT_FALSE(no_else == *str("t")); }), "nothing");
    EXPECT_EQ(outcome([&] { EXPECT_FALSE(no_else == SelectConditional()); }), "nothing");
}

TEST(ValueEquality, CodeComparesTokenKindsAndTextsAndTheText) {
    const std::vector<Token> body = {ident_token("x"), punct('='), string_token("a")};
    const CodeValue code(body);
    EXPECT_TRUE(code == CodeValue(body));
    EXPECT_TRUE(code == *code.clone());
    // Positions are not part of a token's identity.
    EXPECT_TRUE(code == CodeValue(std::vector<Token>{Token(IDENTIFIER, "x", "other.ddl", 9), punct('='),
                                                      string_token("a")}));
    EXPECT_FALSE(code == CodeValue(std::vector<Token>{ident_token("x"), punct('='), ident_token("a")}));
    EXPECT_FALSE(code == CodeValue(std::vector<Token>{ident_token("x"), punct('=')}));
    // Same printed text, one from tokens and one from a text.
    EXPECT_FALSE(code == CodeValue(code.to_string()));
    EXPECT_TRUE(CodeValue("body") == CodeValue("body"));
    EXPECT_FALSE(CodeValue("body") == CodeValue("Body"));
    EXPECT_FALSE(CodeValue("x") == *ident("x"));
}

TEST(ValueEquality, ParametersCompareTypeModeAndName) {
    const ParameterValue p(2, 1, "x");
    EXPECT_TRUE(p == ParameterValue(2, 1, "x"));
    EXPECT_FALSE(p == ParameterValue(3, 1, "x"));
    EXPECT_FALSE(p == ParameterValue(2, 0, "x"));
    EXPECT_FALSE(p == ParameterValue(2, 1, "y"));
    EXPECT_FALSE(p == *ident("x"));
}

TEST(AttributeEquality, NamesAndValuesMustBothBeEqual) {
    const Attribute a("LABEL", str("x"));
    EXPECT_TRUE(a == Attribute("LABEL", str("x")));
    EXPECT_FALSE(a != Attribute("LABEL", str("x")));
    EXPECT_FALSE(a == Attribute("HELP", str("x")));
    EXPECT_TRUE(a != Attribute("LABEL", str("y")));
    EXPECT_TRUE(Attribute() == Attribute());  // "NULL" holding a NullValue
    const Attribute reference("LABEL", make_value<ReferenceValue>("r"));
    EXPECT_FALSE(reference == reference);
}

}  // namespace
}  // namespace edd
