// SPDX-License-Identifier: Apache-2.0
// What a copy of a value that holds other values shares with its original: each holder is
// given a list [a] and cloned; the list held by the original then grows, and only a copy
// that shares the part may see that. Copies of items share their attributes' values.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "model/composed_value.hpp"
#include "model/conditionals.hpp"
#include "model/expression.hpp"
#include "model/item.hpp"
#include "model/reference_value.hpp"
#include "model/simple_value.hpp"
#include "model/type_value.hpp"
#include "model/value_list.hpp"

namespace edd {
namespace {

Arena arena;

ValuePtr word(const char* text) { return arena.make<SimpleValue>(ValueKind::IDENTIFIER, text); }

void grow(const Value& list) { const_cast<ValueList&>(static_cast<const ValueList&>(list)).add(arena, word("x")); }

struct Holder {
    const char* name;
    std::function<ValuePtr(const ValuePtr&)> hold;  // a holder of the given value
    std::function<const Value&(const Value&)> part;  // the value the holder holds
    bool copy_shares;
};

template <class V>
const V& as(const Value& value) {
    return static_cast<const V&>(value);
}

const Holder holders[] = {
    {"ValueList", [](const ValuePtr& v) { auto* h = arena.make<ValueList>(); h->add(arena, v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return *as<ValueList>(h).items()[0]; }, false},
    {"ReferenceValue", [](const ValuePtr& v) { auto* h = arena.make<ReferenceValue>("r"); h->set_argument(v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return *as<ReferenceValue>(h).argument(); }, true},
    {"TypeValue attribute", [](const ValuePtr& v) { auto* h = arena.make<TypeValue>(); h->set_attribute("A", v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return *as<TypeValue>(h).attributes()[0].value; }, false},
    {"TypeValue value", [](const ValuePtr& v) { auto* h = arena.make<TypeValue>(); h->add_value(v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return *as<TypeValue>(h).values()[0]; }, true},
    {"ComposedValue", [](const ValuePtr& v) { auto* h = arena.make<ComposedValue>(); h->set(arena, "f", v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return *as<ComposedValue>(h).value("f"); }, false},
    {"IfConditional condition", [](const ValuePtr& v) { auto* h = arena.make<IfConditional>(); h->set_condition(v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return as<IfConditional>(h).condition(); }, false},
    {"IfConditional then", [](const ValuePtr& v) { auto* h = arena.make<IfConditional>(); h->set_then(v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return as<IfConditional>(h).then_value(); }, false},
    {"IfConditional else", [](const ValuePtr& v) { auto* h = arena.make<IfConditional>(); h->set_else(v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return as<IfConditional>(h).else_value(); }, false},
    {"SelectConditional selector", [](const ValuePtr& v) { auto* h = arena.make<SelectConditional>(); h->set_selector(v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return as<SelectConditional>(h).selector(); }, true},
    {"SelectConditional default", [](const ValuePtr& v) { auto* h = arena.make<SelectConditional>(); h->set_default(v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return as<SelectConditional>(h).default_value(); }, true},
    {"SelectConditional case label", [](const ValuePtr& v) { auto* h = arena.make<SelectConditional>(); h->add_case(arena, v, word("y")); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return as<SelectConditional>(h).case_at(0).label(); }, false},
    {"SelectConditional case value", [](const ValuePtr& v) { auto* h = arena.make<SelectConditional>(); h->add_case(arena, word("y"), v); return ValuePtr(h); },
     [](const Value& h) -> const Value& { return as<SelectConditional>(h).case_at(0).value(); }, false},
    {"Expression", [](const ValuePtr& v) { return ValuePtr(arena.make<Expression>(word("y"), word("+"), v)); },
     [](const Value& h) -> const Value& { return *as<Expression>(h).part(2); }, false},
};

TEST(ValueCopy, ClonesShareTheirPartsAsSpecified) {
    for (const Holder& holder : holders) {
        SCOPED_TRACE(holder.name);
        auto* given = arena.make<ValueList>();
        given->add(arena, word("a"));
        const ValuePtr held = holder.hold(given);
        const ValuePtr copy = held->clone(arena);
        grow(holder.part(*held));
        EXPECT_EQ(holder.part(*copy).to_string(), holder.copy_shares ? "a, x" : "a");
    }
}

TEST(ValueCopy, ItemCopiesShareTheirValues) {
    Item item(arena, ItemType::MENU, "m", {});
    item.set_attribute(AttributeId::ITEMS, arena.make<ValueList>());
    const Item item_copy = item;
    grow(*item.attribute(AttributeId::ITEMS));
    EXPECT_EQ(item_copy.attribute(AttributeId::ITEMS)->to_string(), "x");
}


// Lists and entries start with room for exactly their parts; growing them moves the parts
// and must keep their order, their keys and, for an entry, one field per name.
TEST(ValueCopy, ExactRangesGrowInOrder) {
    const ValuePtr parts[] = {word("a"), arena.make<SimpleValue>(ValueKind::DICTIONARY_REFERENCE, "k")};
    auto* list = arena.make<ValueList>("l", parts);
    for (const char* text : {"b", "c", "d", "e", "f"}) list->add(arena, word(text));
    EXPECT_EQ(list->to_string(), "a, [k], b, c, d, e, f");
    EXPECT_TRUE(list->has_keys());

    const Attribute fields[] = {{"x", word("1")}};
    auto* entry = arena.make<ComposedValue>("e", fields);
    entry->set(arena, "y", word("2"));
    entry->set(arena, "x", word("3"));
    EXPECT_EQ(entry->to_string(), "{3, 2}");
    EXPECT_EQ(entry->attributes().size(), 2u);
    EXPECT_THROW(entry->value("z"), std::invalid_argument);
}

}  // namespace
}  // namespace edd
