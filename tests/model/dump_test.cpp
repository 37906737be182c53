// The text dump of items: header, one line (or block) per defined attribute in code order
// with a terminator chosen by the value's kind, and the separation of items.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/conditionals.hpp"
#include "model/expression.hpp"
#include "model/item.hpp"
#include "model/parameter_value.hpp"
#include "model/reference_value.hpp"
#include "model/type_value.hpp"
#include "model_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;

std::string dumped(const Item& item) {
    std::ostringstream out;
    dump_item(out, item);
    return out.str();
}

TEST(ItemDump, AnItemWithoutAttributesIsItsHeaderAndBraces) {
    EXPECT_EQ(dumped(Item(ItemType::VARIABLE, "pressure")), "VARIABLE pressure\n{\n}\n");
    EXPECT_EQ(dumped(Item(ItemType::WRITE_AS_ONE, "w")), "WRITE_AS_ONE w\n{\n}\n");
}

TEST(ItemDump, EachKindGetsItsOwnTerminator) {
    auto if_value = make_value<IfConditional>();
    static_cast<IfConditional&>(*if_value).set_condition(ident("ready"));
    static_cast<IfConditional&>(*if_value).set_then(keyword("TRUE"));
    auto select = make_value<SelectConditional>();
    static_cast<SelectConditional&>(*select).set_selector(ident("s"));
    auto composed = make_value<ComposedValue>("element");
    static_cast<ComposedValue&>(*composed).set("element_index", integer("0"));
    auto reference = make_value<ReferenceValue>("table");
    static_cast<ReferenceValue&>(*reference).set_argument(integer("2"));
    const std::vector<Token> body = {ident_token("x"), punct('='), Token(INTEGER, "1"), punct(';')};

    struct Case {
        ValuePtr value;
        std::string line;
    };
    const Case cases[] = {
        {str("Pressure"), "    LABEL \"Pressure\";\n"},
        {integer("4"), "    LABEL 4;\n"},
        {simple(ValueKind::FLOAT, "1.5"), "    LABEL 1.5;\n"},
        {keyword("READ_WRITE"), "    LABEL READ_WRITE;\n"},
        {ident("other"), "    LABEL other;\n"},
        {reference, "    LABEL table(2);\n"},
        {dict("pressure_label"), "    LABEL [pressure_label]\n"},
        {list_of(ident("a"), ident("b")), "    LABEL {\na, b\n    }\n"},
        {make_value<ValueList>(), "    LABEL {\n\n    }\n"},
        {make_value<CodeValue>(body), "    LABEL {\nx = 1 ; \n    }\n"},
        {make_value<CodeValue>("x = 1;"), "    LABEL {\nx = 1;\n    }\n"},
        {make_value<TypeValue>("FLOAT", 4), "    LABEL FLOAT(4)\n{\n\n}\n"},
        {if_value, "    LABEL IF (ready) {\n    TRUE\n}\n"},
        {select, "    LABEL SELECT (s) {\n}\n\n"},
        {make_value<Expression>(integer("0"), op("-"), integer("1")), "    LABEL 0 - 1 \n"},
        {composed, "    LABEL {0}\n"},
        {make_value<ParameterValue>(2, 1, "x"), "    LABEL int& x\n"},
        {simple(ValueKind::DATA_MASK, "0x0F"), "    LABEL 0x0F\n"},
        {simple(ValueKind::OPERATOR, "+"), "    LABEL +\n"},
        {make_value<NullValue>(), "    LABEL \n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        Item item(ItemType::VARIABLE, "v");
        item.set_attribute(AttributeId::LABEL, c.value);
        EXPECT_EQ(dumped(item), "VARIABLE v\n{\n" + c.line + "}\n");
    }
}

TEST(ItemDump, AttributesAppearInCodeOrderUnderTheirNames) {
    Item item(ItemType::METHOD, "reset");
    item.set_attribute(AttributeId::method_parameters, list_of(make_value<ParameterValue>(2, 0, "n")));
    item.set_attribute(AttributeId::LABEL, dict("reset_label"));
    item.set_attribute(AttributeId::DEFINITION, make_value<CodeValue>("{ }"));
    item.set_attribute(AttributeId::CLASS, keyword("INPUT"));
    EXPECT_EQ(dumped(item),
              "METHOD reset\n"
              "{\n"
              "    CLASS INPUT;\n"
              "    DEFINITION {\n{ }\n    }\n"
              "    LABEL [reset_label]\n"
              "    method_parameters {\nint n\n    }\n"
              "}\n");
}

TEST(ItemDump, EveryItemOfASequenceIsFollowedByAnEmptyLine) {
    std::vector<Item> items;
    items.emplace_back(ItemType::MENU, "root");
    items.back().set_attribute(AttributeId::LABEL, str("Root"));
    items.emplace_back(ItemType::UNIT, "u");
    std::ostringstream out;
    dump_items(out, items);
    EXPECT_EQ(out.str(), "MENU root\n{\n    LABEL \"Root\";\n}\n\n\nUNIT u\n{\n}\n\n\n");

    std::ostringstream none;
    dump_items(none, {});
    EXPECT_EQ(none.str(), "");
}

}  // namespace
}  // namespace edd
