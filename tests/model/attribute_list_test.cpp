// Attribute lists: one entry per name kept in first-insertion position, and the errors for
// absent names. Composed values hand these operations through.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/attribute.hpp"
#include "model/composed_value.hpp"
#include "model_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;

std::vector<std::string> names_and_texts(const std::vector<Attribute>& attributes) {
    std::vector<std::string> result;
    for (const Attribute& attribute : attributes) result.push_back(attribute.name() + "=" + attribute.value()->to_string());
    return result;
}

TEST(AttributeList, SettingANameAgainKeepsItsPositionWithTheNewValue) {
    AttributeList list;
    list.set("a", integer("1"));
    list.set("b", integer("2"));
    list.set(Attribute("c", integer("3")));
    list.set("a", integer("10"));
    list.set(Attribute("b", integer("20")));
    EXPECT_EQ(names_and_texts(list.all()), (std::vector<std::string>{"a=10", "b=20", "c=3"}));
    EXPECT_EQ(list.value("b")->to_string(), "20");
    EXPECT_EQ(list.get("c").name(), "c");
    EXPECT_TRUE(list.contains("a"));
    EXPECT_FALSE(list.contains("A"));
}

TEST(AttributeList, RemoveErasesAndLaterSetsAppend) {
    AttributeList list;
    list.set("a", integer("1"));
    list.set("b", integer("2"));
    list.remove("a");
    list.set("a", integer("3"));
    EXPECT_EQ(names_and_texts(list.all()), (std::vector<std::string>{"b=2", "a=3"}));
}

TEST(AttributeList, AbsentNamesAreInvalidArguments) {
    AttributeList list;
    list.set("present", integer("1"));
    const std::string message = "invalid_argument: AttributeList: Type not in list.";
    EXPECT_EQ(outcome([&] { (void)list.get("absent"); }), message);
    EXPECT_EQ(outcome([&] { (void)list.value("absent"); }), message);
    EXPECT_EQ(outcome([&] { list.remove("absent"); }), message);
    EXPECT_EQ(outcome([&] { (void)list.get("Present"); }), message);

    ComposedValue composed("element");
    EXPECT_FALSE(composed.has_attributes());
    EXPECT_EQ(outcome([&] { (void)composed.get("absent"); }), message);
    EXPECT_EQ(outcome([&] { (void)composed.value("absent"); }), message);
    EXPECT_EQ(outcome([&] { composed.remove("absent"); }), message);
}

TEST(AttributeList, ComposedValuesForwardToTheirList) {
    ComposedValue composed("element");
    composed.set("element_index", integer("1"));
    composed.set(Attribute("element_reference", ident("x")));
    composed.set("element_index", integer("2"));
    EXPECT_TRUE(composed.has_attributes());
    EXPECT_TRUE(composed.contains("element_reference"));
    EXPECT_EQ(names_and_texts(composed.attributes()),
              (std::vector<std::string>{"element_index=2", "element_reference=x"}));
    composed.remove("element_index");
    EXPECT_EQ(names_and_texts(composed.attributes()), (std::vector<std::string>{"element_reference=x"}));
    EXPECT_EQ(composed.get("element_reference").value()->to_string(), "x");
}

TEST(Attribute, DefaultIsNamedNullAndHoldsANullValue) {
    const Attribute attribute;
    EXPECT_EQ(attribute.name(), "NULL");
    ASSERT_TRUE(attribute.value().is_set());
    EXPECT_EQ(attribute.value()->kind(), ValueKind::UNDEFINED);
}

}  // namespace
}  // namespace edd
