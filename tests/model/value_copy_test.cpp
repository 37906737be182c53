// What a copy of a value shares with its original and what it copies, and that every setter
// keeps its own copy of the value it is given.
#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "model/attribute.hpp"
#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/conditionals.hpp"
#include "model/expression.hpp"
#include "model/item.hpp"
#include "model/reference_value.hpp"
#include "model/type_value.hpp"
#include "model_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;

template <class V>
const V& as(const ValuePtr& value) {
    return static_cast<const V&>(*value);
}

// Every holder is given a list ["a"]; the list then grows. A holder that kept the caller's
// object would show the new item.
TEST(ValueOwnership, SettersAndConstructorsStoreAClone) {
    using Render = std::function<std::string()>;
    struct Case {
        const char* holder;
        std::function<Render(const ValuePtr&)> hold;
    };
    const Case cases[] = {
        {"ValueList::add",
         [](const ValuePtr& v) {
             auto list = make_value<ValueList>();
             as_list(list).add(v);
             return Render([list] { return list->to_string(); });
         }},
        {"ValueList::add by reference",
         [](const ValuePtr& v) {
             auto list = make_value<ValueList>();
             as_list(list).add(*v);
             return Render([list] { return list->to_string(); });
         }},
        {"ValueList::set",
         [](const ValuePtr& v) {
             auto list = list_of(ident("x"));
             as_list(list).set(0, v);
             return Render([list] { return list->to_string(); });
         }},
        {"ValueList::set_last",
         [](const ValuePtr& v) {
             auto list = list_of(ident("x"), ident("y"));
             as_list(list).set_last(v);
             return Render([list] { return list->to_string(); });
         }},
        {"ReferenceValue::set_argument",
         [](const ValuePtr& v) {
             auto ref = make_value<ReferenceValue>("r");
             static_cast<ReferenceValue&>(*ref).set_argument(v);
             return Render([ref] { return ref->to_string(); });
         }},
        {"TypeValue::set_attribute",
         [](const ValuePtr& v) {
             auto type = make_value<TypeValue>();
             static_cast<TypeValue&>(*type).set_attribute(Attribute("MIN_VALUE", v));
             return Render([type] { return type->to_string(); });
         }},
        {"TypeValue::add_value",
         [](const ValuePtr& v) {
             auto type = make_value<TypeValue>();
             static_cast<TypeValue&>(*type).add_value(v);
             return Render([type] { return type->to_string(); });
         }},
        {"ComposedValue::set",
         [](const ValuePtr& v) {
             auto composed = make_value<ComposedValue>();
             static_cast<ComposedValue&>(*composed).set("f", v);
             return Render([composed] { return composed->to_string(); });
         }},
        {"IfConditional::set_condition",
         [](const ValuePtr& v) {
             auto value = make_value<IfConditional>();
             static_cast<IfConditional&>(*value).set_condition(v);
             return Render([value] { return value->to_string(); });
         }},
        {"IfConditional::set_then",
         [](const ValuePtr& v) {
             auto value = make_value<IfConditional>();
             static_cast<IfConditional&>(*value).set_then(v);
             return Render([value] { return value->to_string(); });
         }},
        {"IfConditional::set_else",
         [](const ValuePtr& v) {
             auto value = make_value<IfConditional>();
             static_cast<IfConditional&>(*value).set_else(v);
             return Render([value] { return value->to_string(); });
         }},
        {"SelectConditional::set_selector",
         [](const ValuePtr& v) {
             auto value = make_value<SelectConditional>();
             static_cast<SelectConditional&>(*value).set_selector(v);
             return Render([value] { return value->to_string(); });
         }},
        {"SelectConditional::add_case label",
         [](const ValuePtr& v) {
             auto value = make_value<SelectConditional>();
             static_cast<SelectConditional&>(*value).add_case(v, ident("x"));
             return Render([value] { return value->to_string(); });
         }},
        {"SelectConditional::add_case value",
         [](const ValuePtr& v) {
             auto value = make_value<SelectConditional>();
             static_cast<SelectConditional&>(*value).add_case(integer("1"), v);
             return Render([value] { return value->to_string(); });
         }},
        {"SelectConditional::set_default",
         [](const ValuePtr& v) {
             auto value = make_value<SelectConditional>();
             static_cast<SelectConditional&>(*value).set_default(v);
             return Render([value] { return value->to_string(); });
         }},
        {"Case constructor",
         [](const ValuePtr& v) {
             auto c = std::make_shared<SelectConditional::Case>(v, v);
             return Render([c] { return c->label().to_string() + "|" + c->value().to_string(); });
         }},
        {"Expression constructor",
         [](const ValuePtr& v) {
             auto e = make_value<Expression>(v, op("+"), v);
             return Render([e] { return e->to_string(); });
         }},
        {"Expression constructor, five parts",
         [](const ValuePtr& v) {
             auto e = make_value<Expression>(v, op("?"), v, op(":"), v);
             return Render([e] { return e->to_string(); });
         }},
        {"Attribute constructor",
         [](const ValuePtr& v) {
             auto attribute = std::make_shared<Attribute>("A", v);
             return Render([attribute] { return attribute->value()->to_string(); });
         }},
        {"Item::set_attribute",
         [](const ValuePtr& v) {
             auto item = std::make_shared<Item>(ItemType::MENU, "m");
             item->set_attribute(AttributeId::ITEMS, v);
             return Render([item] { return item->attribute(AttributeId::ITEMS)->to_string(); });
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.holder);
        const ValuePtr original = list_of(ident("a"));
        const Render render = c.hold(original);
        const std::string before = render();
        ASSERT_NE(before.find('a'), std::string::npos) << before;
        as_list(original).add(ident("b"));
        EXPECT_EQ(render(), before);
    }
}

// A handle handed over that nothing else holds is kept as it is: no one could tell a copy
// apart. A handle shared with someone else gets a clone all the same.
TEST(ValueOwnership, ASoleHandleHandedOverIsKeptWithoutACopy) {
    auto list = make_value<ValueList>();
    Item item(ItemType::MENU, "m");
    ValuePtr fresh = list_of(ident("a"));
    const Value* fresh_object = fresh.get();
    as_list(list).add(std::move(fresh));
    EXPECT_EQ(as_list(list).get(0).get(), fresh_object);
    fresh = list_of(ident("b"));
    fresh_object = fresh.get();
    item.set_attribute(AttributeId::ITEMS, std::move(fresh));
    EXPECT_EQ(item.attribute(AttributeId::ITEMS).get(), fresh_object);

    const ValuePtr kept = list_of(ident("c"));
    ValuePtr shared = kept;
    as_list(list).add(std::move(shared));
    EXPECT_NE(as_list(list).get(1).get(), kept.get());
    shared = kept;
    item.set_attribute(AttributeId::ITEMS, std::move(shared));
    EXPECT_NE(item.attribute(AttributeId::ITEMS).get(), kept.get());
}

// The attribute handed in is a holder of its own: its value must not be shared either.
TEST(ValueOwnership, AttributesAreStoredWithACloneOfTheirValue) {
    const Attribute attribute("MIN_VALUE", list_of(integer("0")));
    TypeValue type;
    type.set_attribute(attribute);
    ComposedValue composed;
    composed.set(attribute);
    AttributeList list;
    list.set(attribute);
    as_list(attribute.value()).add(integer("1"));
    EXPECT_EQ(type.get_attribute("MIN_VALUE")->to_string(), "0");
    EXPECT_EQ(composed.value("MIN_VALUE")->to_string(), "0");
    EXPECT_EQ(list.value("MIN_VALUE")->to_string(), "0");
}

TEST(ValueCopy, ListCloneHoldsNewItems) {
    const ValuePtr original = list_of(list_of(ident("a")), ident("b"));
    const ValuePtr copy = original->clone();
    ASSERT_EQ(as<ValueList>(copy).size(), 2u);
    EXPECT_NE(as<ValueList>(copy).get(0).get(), as<ValueList>(original).get(0).get());
    EXPECT_NE(as<ValueList>(copy).get(1).get(), as<ValueList>(original).get(1).get());

    as_list(as<ValueList>(original).get(0)).add(ident("changed"));
    EXPECT_EQ(copy->to_string(), "a, b");
    EXPECT_EQ(original->to_string(), "a, changed, b");
}

TEST(ValueCopy, ListCloneKeepsTheName) {
    ValueList named("members");
    named.add(ident("a"));
    const ValuePtr copy = named.clone();
    EXPECT_EQ(as<ValueList>(copy).name(), "members");
}

TEST(ValueCopy, TypeCloneCopiesAttributesButSharesValues) {
    TypeValue original("ENUMERATED", 2);
    original.set_attribute(Attribute("DEFAULT_VALUE", list_of(integer("0"))));
    original.add_value(list_of(ident("first")));

    const ValuePtr copy = original.clone();
    const auto& type = as<TypeValue>(copy);
    EXPECT_NE(type.get_attribute("DEFAULT_VALUE").get(), original.get_attribute("DEFAULT_VALUE").get());
    ASSERT_EQ(type.values().size(), 1u);
    EXPECT_EQ(type.values()[0].get(), original.values()[0].get());

    // A change through the original's handles: seen in the shared value only.
    as_list(original.get_attribute("DEFAULT_VALUE")).add(integer("1"));
    as_list(original.values()[0]).add(ident("second"));
    EXPECT_EQ(type.get_attribute("DEFAULT_VALUE")->to_string(), "0");
    EXPECT_EQ(type.values()[0]->to_string(), "first, second");

    // Attributes read out as a sequence are copies as well.
    const std::vector<Attribute> attributes = original.attributes();
    ASSERT_EQ(attributes.size(), 1u);
    EXPECT_NE(attributes[0].value().get(), original.get_attribute("DEFAULT_VALUE").get());
}

TEST(ValueCopy, ReferenceCloneSharesItsArgument) {
    ReferenceValue original("table");
    original.set_argument(list_of(integer("1")));
    const ValuePtr copy = original.clone();
    ASSERT_TRUE(as<ReferenceValue>(copy).has_argument());
    EXPECT_EQ(as<ReferenceValue>(copy).argument().get(), original.argument().get());

    as_list(original.argument()).add(integer("2"));
    EXPECT_EQ(copy->to_string(), "table(1, 2)");

    EXPECT_FALSE(as<ReferenceValue>(ReferenceValue("plain").clone()).has_argument());
}

TEST(ValueCopy, ComposedCloneCopiesAttributeValues) {
    ComposedValue original("element");
    original.set("element_reference", list_of(ident("a")));
    const ValuePtr copy = original.clone();
    EXPECT_NE(as<ComposedValue>(copy).value("element_reference").get(), original.value("element_reference").get());
    EXPECT_EQ(as<ComposedValue>(copy).name(), "element");

    as_list(original.value("element_reference")).add(ident("b"));
    EXPECT_EQ(copy->to_string(), "{a}");
}

TEST(ValueCopy, SelectCloneSharesSelectorAndDefaultButRebuildsCases) {
    SelectConditional original;
    original.set_selector(list_of(ident("s")));
    original.add_case(list_of(integer("1")), list_of(ident("one")));
    original.set_default(list_of(ident("other")));

    const ValuePtr copy = original.clone();
    const auto& select = as<SelectConditional>(copy);
    EXPECT_EQ(&select.selector(), &original.selector());
    EXPECT_EQ(&select.default_value(), &original.default_value());
    ASSERT_EQ(select.case_count(), 1u);
    EXPECT_NE(&select.case_at(0).label(), &original.case_at(0).label());
    EXPECT_NE(&select.case_at(0).value(), &original.case_at(0).value());

    as_list(original.case_at(0).label_ptr()).add(integer("2"));
    as_list(original.case_at(0).value_ptr()).add(ident("two"));
    EXPECT_EQ(copy->to_string(), "SELECT (s) {\n    CASE 1:\n        one\n    DEFAULT:\n        other\n}\n");
}

TEST(ValueCopy, SelectCloneWithoutDefaultHasNone) {
    SelectConditional original;
    original.set_selector(ident("s"));
    EXPECT_FALSE(as<SelectConditional>(original.clone()).has_default());
}

TEST(ValueCopy, IfCloneClonesEveryPart) {
    IfConditional original;
    original.set_condition(ident("c"));
    original.set_then(ident("t"));
    original.set_else(ident("e"));
    const ValuePtr copy = original.clone();
    const auto& conditional = as<IfConditional>(copy);
    EXPECT_NE(&conditional.condition(), &original.condition());
    EXPECT_NE(&conditional.then_value(), &original.then_value());
    ASSERT_TRUE(conditional.has_else());
    EXPECT_NE(&conditional.else_value(), &original.else_value());
    EXPECT_EQ(copy->to_string(), original.to_string());
}

TEST(ValueCopy, IfCloneWithoutElseHasNone) {
    IfConditional original;
    original.set_condition(ident("c"));
    const ValuePtr copy = original.clone();
    EXPECT_FALSE(as<IfConditional>(copy).has_else());
    EXPECT_EQ(copy->to_string(), "IF (c) {\n    \n}");
}

TEST(ValueCopy, ExpressionCloneClonesEveryPart) {
    Expression original(list_of(ident("a")), op("+"), integer("1"));
    const ValuePtr copy = original.clone();
    const auto& expression = as<Expression>(copy);
    ASSERT_EQ(expression.part_count(), 3u);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NE(expression.part(i).get(), original.part(i).get()) << i;

    as_list(original.part(0)).add(ident("b"));
    EXPECT_EQ(copy->to_string(), "a + 1 ");
}

TEST(ValueCopy, CodeCloneKeepsTokensAndText) {
    const CodeValue from_tokens({ident_token("x"), punct('='), Token(INTEGER, "1")});
    const ValuePtr copy = from_tokens.clone();
    EXPECT_EQ(as<CodeValue>(copy).tokens(), from_tokens.tokens());
    EXPECT_EQ(copy->to_string(), "x = 1 ");
    EXPECT_EQ(CodeValue("body").clone()->to_string(), "body");
}

TEST(ValueCopy, AttributeCopyAndAssignmentCloneTheValue) {
    const Attribute original("LABEL", list_of(ident("a")));
    const Attribute copied(original);
    Attribute assigned;
    assigned = original;
    for (const Attribute* attribute : std::initializer_list<const Attribute*>{&copied, &assigned}) {
        EXPECT_EQ(attribute->name(), "LABEL");
        EXPECT_NE(attribute->value().get(), original.value().get());
    }
    as_list(original.value()).add(ident("b"));
    EXPECT_EQ(copied.value()->to_string(), "a");
    EXPECT_EQ(assigned.value()->to_string(), "a");
}

}  // namespace
}  // namespace edd
