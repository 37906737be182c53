// What the values that hold handles keep for themselves and what a copy shares. Every
// holder is given a list [a]; the list given then grows, and so does the one held, and
// only a holder's copy that shares its part may see that.
#include <gtest/gtest.h>

#include <functional>
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

ValuePtr word(const char* text) { return make_value<SimpleValue>(ValueKind::IDENTIFIER, text); }

void grow(const Value& list) { const_cast<ValueList&>(static_cast<const ValueList&>(list)).add(word("x")); }

template <class V>
V& as(const ValuePtr& value) {
    return static_cast<V&>(*value);
}

struct Holder {
    const char* name;
    std::function<ValuePtr(const ValuePtr&)> hold;  // a holder of the given value
    std::function<const Value&(const Value&)> part;  // the value the holder holds
    bool copy_shares;
};

const Holder holders[] = {
    {"ValueList::add", [](const ValuePtr& v) { auto h = make_value<ValueList>(); as<ValueList>(h).add(v); return h; },
     [](const Value& h) -> const Value& { return *static_cast<const ValueList&>(h).get(0); }, false},
    {"ValueList::set_last", [](const ValuePtr& v) { auto h = make_value<ValueList>(); as<ValueList>(h).add(word("y"));
                                                    as<ValueList>(h).set_last(v); return h; },
     [](const Value& h) -> const Value& { return *static_cast<const ValueList&>(h).last(); }, false},
    {"ReferenceValue::set_argument", [](const ValuePtr& v) { auto h = make_value<ReferenceValue>("r");
                                                             as<ReferenceValue>(h).set_argument(v); return h; },
     [](const Value& h) -> const Value& { return *static_cast<const ReferenceValue&>(h).argument(); }, true},
    {"TypeValue::set_attribute", [](const ValuePtr& v) { auto h = make_value<TypeValue>();
                                                         as<TypeValue>(h).set_attribute(Attribute("A", v)); return h; },
     [](const Value& h) -> const Value& { return *static_cast<const TypeValue&>(h).get_attribute("A"); }, false},
    {"TypeValue::add_value", [](const ValuePtr& v) { auto h = make_value<TypeValue>(); as<TypeValue>(h).add_value(v); return h; },
     [](const Value& h) -> const Value& { return *static_cast<const TypeValue&>(h).values()[0]; }, true},
    {"ComposedValue::set", [](const ValuePtr& v) { auto h = make_value<ComposedValue>(); as<ComposedValue>(h).set("f", v); return h; },
     [](const Value& h) -> const Value& { return *static_cast<const ComposedValue&>(h).value("f"); }, false},
    {"IfConditional::set_condition", [](const ValuePtr& v) { auto h = make_value<IfConditional>();
                                                             as<IfConditional>(h).set_condition(v); return h; },
     [](const Value& h) -> const Value& { return static_cast<const IfConditional&>(h).condition(); }, false},
    {"IfConditional::set_then", [](const ValuePtr& v) { auto h = make_value<IfConditional>();
                                                        as<IfConditional>(h).set_then(v); return h; },
     [](const Value& h) -> const Value& { return static_cast<const IfConditional&>(h).then_value(); }, false},
    {"IfConditional::set_else", [](const ValuePtr& v) { auto h = make_value<IfConditional>();
                                                        as<IfConditional>(h).set_else(v); return h; },
     [](const Value& h) -> const Value& { return static_cast<const IfConditional&>(h).else_value(); }, false},
    {"SelectConditional::set_selector", [](const ValuePtr& v) { auto h = make_value<SelectConditional>();
                                                                as<SelectConditional>(h).set_selector(v); return h; },
     [](const Value& h) -> const Value& { return static_cast<const SelectConditional&>(h).selector(); }, true},
    {"SelectConditional::set_default", [](const ValuePtr& v) { auto h = make_value<SelectConditional>();
                                                               as<SelectConditional>(h).set_default(v); return h; },
     [](const Value& h) -> const Value& { return static_cast<const SelectConditional&>(h).default_value(); }, true},
    {"SelectConditional::add_case label", [](const ValuePtr& v) { auto h = make_value<SelectConditional>();
                                                                  as<SelectConditional>(h).add_case(v, word("y")); return h; },
     [](const Value& h) -> const Value& { return static_cast<const SelectConditional&>(h).case_at(0).label(); }, false},
    {"SelectConditional::add_case value", [](const ValuePtr& v) { auto h = make_value<SelectConditional>();
                                                                  as<SelectConditional>(h).add_case(word("y"), v); return h; },
     [](const Value& h) -> const Value& { return static_cast<const SelectConditional&>(h).case_at(0).value(); }, false},
    {"Expression", [](const ValuePtr& v) { return make_value<Expression>(word("y"), word("+"), v); },
     [](const Value& h) -> const Value& { return *static_cast<const Expression&>(h).part(2); }, false},
};

TEST(ValueCopy, HoldersKeepAClonePartsAreSharedAsSpecified) {
    for (const Holder& holder : holders) {
        SCOPED_TRACE(holder.name);
        ValuePtr given = make_value<ValueList>();
        as<ValueList>(given).add(word("a"));
        const ValuePtr held = holder.hold(given);
        grow(*given);
        EXPECT_EQ(holder.part(*held).to_string(), "a");
        const ValuePtr copy = held->clone();
        grow(holder.part(*held));
        EXPECT_EQ(holder.part(*copy).to_string(), holder.copy_shares ? "a, x" : "a");
    }
}

// Copies of attributes clone their value; copies of items share theirs.
TEST(ValueCopy, AttributesAndItems) {
    const Attribute original("LABEL", make_value<ValueList>());
    Attribute assigned;
    assigned = original;
    const Attribute copied(original);
    grow(*original.value());
    EXPECT_EQ(assigned.value()->to_string() + '|' + copied.value()->to_string(), "|");

    Item item(ItemType::MENU, "m");
    item.set_attribute(AttributeId::ITEMS, make_value<ValueList>());
    const Item item_copy = item;
    grow(*item.attribute(AttributeId::ITEMS));
    EXPECT_EQ(item_copy.attribute(AttributeId::ITEMS)->to_string(), "x");
}

}  // namespace
}  // namespace edd
