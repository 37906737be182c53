// Access errors of the value classes: list indices, type attribute lookups and the
// NullPointer raised wherever an unset handle is followed.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "model/composed_value.hpp"
#include "model/conditionals.hpp"
#include "model/expression.hpp"
#include "model/reference_value.hpp"
#include "model/type_value.hpp"
#include "model_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;

TEST(ValueListAccess, IndicesPastTheEndAreInvalidArguments) {
    const std::string message = "invalid_argument: ValueList: invalid index";
    ValueList empty;
    EXPECT_EQ(outcome([&] { (void)empty.get(0); }), message);
    EXPECT_EQ(outcome([&] { (void)empty.last(); }), message);
    EXPECT_EQ(outcome([&] { empty.set(0, ident("x")); }), message);
    EXPECT_EQ(outcome([&] { empty.set_last(ident("x")); }), message);
    EXPECT_EQ(empty.size(), 0u);

    ValueList two;
    two.add(ident("a"));
    two.add(ident("b"));
    EXPECT_EQ(outcome([&] { (void)two.get(2); }), message);
    EXPECT_EQ(outcome([&] { two.set(2, ident("x")); }), message);
    EXPECT_EQ(two.last()->to_string(), "b");
    two.set_last(ident("c"));
    two.set(0, ident("z"));
    EXPECT_EQ(two.to_string(), "z, c");
}

TEST(TypeValueAccess, AbsentAttributeIsALogicError) {
    TypeValue type("INTEGER", 4);
    type.set_attribute(Attribute("MIN_VALUE", integer("0")));
    EXPECT_EQ(outcome([&] { (void)type.get_attribute("MAX_VALUE"); }), "logic_error: edd::TypeValue::get_attribute");
    EXPECT_EQ(outcome([&] { (void)type.get_attribute("min_value"); }), "logic_error: edd::TypeValue::get_attribute");
    EXPECT_EQ(type.get_attribute("MIN_VALUE")->to_string(), "0");
}

TEST(UnsetHandles, FollowingOneRaisesNullPointer) {
    const ValuePtr unset;
    EXPECT_FALSE(unset.is_set());
    EXPECT_EQ(outcome([&] { (void)*unset; }), "NullPointer");
    EXPECT_EQ(outcome([&] { (void)unset->kind(); }), "NullPointer");
    EXPECT_EQ(outcome([&] { (void)clone_of(unset); }), "NullPointer");

    // A handle made from a null pointer counts as set, but following it still fails.
    const ValuePtr null_value(std::shared_ptr<Value>(static_cast<Value*>(nullptr)));
    EXPECT_TRUE(null_value.is_set());
    EXPECT_EQ(outcome([&] { (void)null_value->to_string(); }), "NullPointer");
}

TEST(UnsetHandles, SettersAndReadersOfMissingPartsRaiseNullPointer) {
    const ValuePtr unset;
    IfConditional conditional;
    SelectConditional select;
    ValueList list;
    list.add(ident("a"));
    ReferenceValue reference("r");
    TypeValue type;
    ComposedValue composed;
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"else of an IF without ELSE", [&] { (void)conditional.else_value(); }},
        {"default of a SELECT without DEFAULT", [&] { (void)select.default_value(); }},
        {"IF set_condition", [&] { conditional.set_condition(unset); }},
        {"IF set_else", [&] { conditional.set_else(unset); }},
        {"SELECT set_selector", [&] { select.set_selector(unset); }},
        {"SELECT add_case label", [&] { select.add_case(unset, ident("x")); }},
        {"SELECT add_case value", [&] { select.add_case(ident("x"), unset); }},
        {"list add", [&] { list.add(unset); }},
        {"list set", [&] { list.set(0, unset); }},
        {"reference argument", [&] { reference.set_argument(unset); }},
        {"type value", [&] { type.add_value(unset); }},
        {"composed attribute", [&] { composed.set("f", unset); }},
        {"expression part", [&] { (void)Expression(ident("a"), unset); }},
    };
    for (const auto& [name, call] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(outcome(call), "NullPointer");
    }
    // Nothing was stored by the failed calls.
    EXPECT_FALSE(conditional.has_else());
    EXPECT_FALSE(select.has_default());
    EXPECT_EQ(select.case_count(), 0u);
    EXPECT_EQ(list.to_string(), "a");
    EXPECT_FALSE(reference.has_argument());
    EXPECT_FALSE(composed.has_attributes());
}

TEST(UnsetHandles, DefaultConditionalsHoldNullValuesWhereTheyMustHaveParts) {
    const IfConditional conditional;
    EXPECT_EQ(conditional.condition().kind(), ValueKind::UNDEFINED);
    EXPECT_EQ(conditional.then_value().kind(), ValueKind::UNDEFINED);
    EXPECT_FALSE(conditional.has_else());
    const SelectConditional select;
    EXPECT_EQ(select.selector().kind(), ValueKind::UNDEFINED);
    EXPECT_FALSE(select.has_default());
}

}  // namespace
}  // namespace edd
