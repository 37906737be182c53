// Items: attribute slots and their errors, copies sharing slot values, and the lookups of
// item types and attribute ids by keyword.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/item.hpp"
#include "model/item_type.hpp"
#include "model_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;

TEST(ItemTypeLookup, EveryNameIsFoundAtItsCode) {
    for (std::size_t i = 0; i < item_type_count; ++i) {
        const auto type = static_cast<ItemType>(i);
        SCOPED_TRACE(name_of(type));
        EXPECT_EQ(find_item_type(name_of(type)), type);
    }
    EXPECT_EQ(find_item_type("ARRAY"), static_cast<ItemType>(0));
    EXPECT_EQ(find_item_type("VARIABLE_LIST"), static_cast<ItemType>(22));
    EXPECT_EQ(find_item_type("WRITE_AS_ONE"), static_cast<ItemType>(24));
}

TEST(ItemTypeLookup, NamesNotInTheTableAreUnknown) {
    for (const char* name : {"", "A", "AAA", "ARRAYS", "COMMA", "MENU ", "Menu", "menu", "VARIABLE_", "WRITE_AS_ONEX",
                             "ZZZ", "\xff"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(code(find_item_type(name)), 255);
    }
}

TEST(AttributeLookup, ExactCaseSensitiveNamesOnly) {
    const std::pair<const char*, int> cases[] = {
        {"ACCESS", 0},
        {"LABEL", 26},
        {"label", 255},
        {"Label", 255},
        {"LABEL ", 255},
        {"", 255},
        {"effected_parameter", 65},
        {"affected_parameter", 255},
        {"response_code", 69},
        {"RESPONSE_CODE", 255},
        {"RESPONSE_CODES", 49},
        {"NULL", 255},
    };
    for (const auto& [name, expected] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(code(find_attribute(name)), expected);
    }
}

TEST(ItemSlots, InvalidIdsAreRejectedByEveryAttributeOperation) {
    const ValuePtr value = str("x");
    for (const AttributeId id : {AttributeId::COUNT_, AttributeId::INVALID, find_attribute("label")}) {
        SCOPED_TRACE(int(code(id)));
        Item item(ItemType::VARIABLE, "v");
        const std::string message = "invalid_argument: Invalid object attribute id.";
        EXPECT_EQ(outcome([&] { (void)item.has_attribute(id); }), message);
        EXPECT_EQ(outcome([&] { (void)item.attribute(id); }), message);
        EXPECT_EQ(outcome([&] { item.set_attribute(id, value); }), message);
        EXPECT_EQ(outcome([&] { item.remove_attribute(id); }), message);
        EXPECT_TRUE(item.defined_attributes().empty());
    }
}

TEST(ItemSlots, TheIdIsCheckedBeforeTheValue) {
    Item item(ItemType::VARIABLE, "v");
    EXPECT_EQ(outcome([&] { item.set_attribute(AttributeId::INVALID, ValuePtr()); }),
              "invalid_argument: Invalid object attribute id.");
    EXPECT_EQ(outcome([&] { item.set_attribute(AttributeId::LABEL, ValuePtr()); }), "NullPointer");
    EXPECT_FALSE(item.has_attribute(AttributeId::LABEL));
}

TEST(ItemSlots, ReadingAnUndefinedAttributeIsALogicError) {
    Item item(ItemType::VARIABLE, "v");
    EXPECT_EQ(outcome([&] { (void)item.attribute(AttributeId::LABEL); }),
              "logic_error: Trying to access attribtue that is not defined.");
    item.set_attribute(AttributeId::LABEL, str("x"));
    item.remove_attribute(AttributeId::LABEL);
    EXPECT_EQ(outcome([&] { (void)item.attribute(AttributeId::LABEL); }),
              "logic_error: Trying to access attribtue that is not defined.");
}

TEST(ItemSlots, SetReplaceAndRemove) {
    Item item(ItemType::VARIABLE, "v");
    EXPECT_FALSE(item.has_attribute(AttributeId::LABEL));
    item.remove_attribute(AttributeId::LABEL);  // allowed on an undefined slot
    EXPECT_TRUE(item.defined_attributes().empty());

    item.set_attribute(AttributeId::LABEL, str("first"));
    item.set_attribute(AttributeId::LABEL, str("second"));
    EXPECT_TRUE(item.has_attribute(AttributeId::LABEL));
    EXPECT_EQ(item.attribute(AttributeId::LABEL)->to_string(), "\"second\"");
    EXPECT_EQ(item.defined_attributes(), std::vector<AttributeId>{AttributeId::LABEL});

    item.remove_attribute(AttributeId::LABEL);
    EXPECT_FALSE(item.has_attribute(AttributeId::LABEL));
    EXPECT_TRUE(item.defined_attributes().empty());
}

TEST(ItemSlots, DefinedAttributesComeInCodeOrder) {
    Item item(ItemType::VARIABLE, "v");
    for (const AttributeId id : {AttributeId::response_code, AttributeId::TYPE, AttributeId::ACCESS, AttributeId::LABEL,
                                 AttributeId::HELP})
        item.set_attribute(id, str("x"));
    EXPECT_EQ(item.defined_attributes(), (std::vector<AttributeId>{AttributeId::ACCESS, AttributeId::HELP,
                                                                   AttributeId::LABEL, AttributeId::TYPE,
                                                                   AttributeId::response_code}));
}

TEST(ItemCopy, CopiesShareSlotValuesButNotSlots) {
    Item original(ItemType::COLLECTION, "c", Token(EDDL_KEYWORD, "COLLECTION", "dev.ddl", 12));
    original.set_parent("base");
    original.set_attribute(AttributeId::MEMBERS, list_of(ident("a")));
    original.set_attribute(AttributeId::LABEL, str("label"));

    Item copy = original;
    EXPECT_EQ(copy.name(), "c");
    EXPECT_EQ(copy.parent(), "base");
    EXPECT_TRUE(copy.has_parent());
    EXPECT_EQ(copy.origin(), original.origin());
    EXPECT_EQ(copy.origin().line(), 12);
    EXPECT_EQ(copy.attribute(AttributeId::MEMBERS).get(), original.attribute(AttributeId::MEMBERS).get());

    // A value changed in place is seen through both items.
    as_list(original.attribute(AttributeId::MEMBERS)).add(ident("b"));
    EXPECT_EQ(copy.attribute(AttributeId::MEMBERS)->to_string(), "a, b");

    // Setting and removing act on one item's slots only.
    copy.set_attribute(AttributeId::LABEL, str("other"));
    copy.remove_attribute(AttributeId::MEMBERS);
    EXPECT_EQ(original.attribute(AttributeId::LABEL)->to_string(), "\"label\"");
    EXPECT_TRUE(original.has_attribute(AttributeId::MEMBERS));

    Item assigned(ItemType::MENU, "m");
    assigned = original;
    EXPECT_EQ(assigned.type(), ItemType::COLLECTION);
    EXPECT_EQ(assigned.attribute(AttributeId::MEMBERS).get(), original.attribute(AttributeId::MEMBERS).get());
}

}  // namespace
}  // namespace edd
