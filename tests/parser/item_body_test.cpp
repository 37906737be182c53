// Item bodies: attribute statements with their two checks (profile: reported and kept;
// attribute table: reported and dropped), repeated attributes, the two merging attributes,
// and the fixed bodies of REFRESH, UNIT, RESPONSE_CODES and WRITE_AS_ONE.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "model/composed_value.hpp"
#include "model/value_list.hpp"
#include "parse_helpers.hpp"

namespace edd {
namespace {

using namespace parse_test;

TEST(ItemBodyAttributes, UnknownAttributeNameIsFatal) {
    const Parsed parsed = parse_body(
        "VARIABLE a { LABEL \"a\"; }\n"
        "VARIABLE v { LABEL \"x\"; LABLE \"y\"; }\n"
        "VARIABLE w { }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, error_line(3, "LABLE is not a valid attribute id"));
    EXPECT_EQ(parsed.errors, 1);
    EXPECT_EQ(parsed.item_names(), std::vector<std::string>{"a"});
}

// The profile's refusal keeps the value; the attribute table's refusal drops it.
TEST(ItemBodyAttributes, ProfileRefusalKeepsTheValueAndTheTableDropsIt) {
    struct Case {
        std::string profile;
        std::string source;
        std::string message;  // empty: none
        std::string dump;
    };
    const Case cases[] = {
        {"HART", "COMMAND c { SLOT 3; NUMBER 1; }", "SLOT is not allowed on object of type COMMAND in HART.",
         "COMMAND c\n{\n    NUMBER 1;\n    SLOT 3;\n}\n"},
        {"HART", "COMMAND c { INDEX 2; }", "INDEX is not allowed on object of type COMMAND in HART.",
         "COMMAND c\n{\n    INDEX 2;\n}\n"},
        {"PROFIBUS", "COMMAND c { SLOT 3; NUMBER 1; }",
         "NUMBER is not allowed on object of type COMMAND in PROFIBUS.", "COMMAND c\n{\n    NUMBER 1;\n    SLOT 3;\n}\n"},
        {"PROFIBUS", "COMMAND c { MODULE m; }", "MODULE is not allowed on object of type COMMAND in PROFIBUS.",
         "COMMAND c\n{\n    MODULE m;\n}\n"},
        {"", "COMMAND c { HEADER h; }", "", "COMMAND c\n{\n    HEADER h;\n}\n"},
        {"", "VARIABLE v { MIN_VALUE 3; LABEL \"x\"; }", "MIN_VALUE is not allowd on object of type VARIABLE",
         "VARIABLE v\n{\n    LABEL \"x\";\n}\n"},
        {"HART", "VARIABLE v { MAX_VALUE 3; }", "MAX_VALUE is not allowd on object of type VARIABLE",
         "VARIABLE v\n{\n}\n"},
        {"", "AXIS a { MIN_VALUE 3; }", "", "AXIS a\n{\n    MIN_VALUE 3;\n}\n"},
        {"", "MENU m { TYPE x; }", "TYPE is not allowd on object of type MENU", "MENU m\n{\n}\n"},
        {"", "CHART c { TYPE STRIP; }", "", "CHART c\n{\n    TYPE STRIP;\n}\n"},
        {"", "BLOCK b { LABEL \"x\"; NUMBER 1; }", "LABEL is not allowd on object of type BLOCK",
         "BLOCK b\n{\n    NUMBER 1;\n}\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.profile + ": " + c.source);
        const Parsed parsed = parse_body(c.source + "\nVARIABLE after { }\n", c.profile);
        EXPECT_EQ(parsed.diagnostics, c.message.empty() ? std::string() : error_line(2, c.message));
        EXPECT_EQ(parsed.errors, c.message.empty() ? 0 : 1);
        EXPECT_EQ(parsed.result, c.message.empty());
        ASSERT_EQ(parsed.description.items.size(), 2U);  // neither refusal ends the parse
        EXPECT_EQ(dumped(parsed.description.items.items().front()), c.dump);
    }
}

TEST(ItemBodyAttributes, RepeatedAttributeLastOneWinsSilently) {
    const Parsed parsed = parse_body(
        "VARIABLE v { LABEL \"a\"; HELP \"h\"; LABEL \"b\"; }\n"
        "VARIABLE w { RESPONSE_CODES first; RESPONSE_CODES second; }\n"
        "MENU m { ITEMS { a } ITEMS { b, c } }\n"
        "MENU n { ITEMS { b, c } }\n");
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, "");
    EXPECT_EQ(parsed.attribute("v", AttributeId::LABEL).to_string(), "\"b\"");
    EXPECT_EQ(parsed.attribute("v", AttributeId::HELP).to_string(), "\"h\"");
    // RESPONSE_CODES merges only as the entries of a RESPONSE_CODES item.
    EXPECT_EQ(shape(parsed.attribute("w", AttributeId::RESPONSE_CODES)), "@second");
    auto body_of = [](const std::string& dump) { return dump.substr(dump.find('\n')); };
    EXPECT_EQ(body_of(dumped(parsed.item("m"))), body_of(dumped(parsed.item("n"))));
}

TEST(ItemBodyAttributes, BracedAndPlainGenericValuesAreTheSame) {
    const Parsed parsed = parse_body(
        "VARIABLE v { LABEL { \"x\" } HELP \"y\"; }\n"
        "VARIABLE w { LABEL { IF (c) { \"x\" } } HELP { a, b } }\n");
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, "");
    EXPECT_EQ(dumped(parsed.item("v")), "VARIABLE v\n{\n    HELP \"y\";\n    LABEL \"x\";\n}\n");
    EXPECT_EQ(shape(parsed.attribute("w", AttributeId::LABEL)), "IF(@c){\"x\"}");
    EXPECT_EQ(shape(parsed.attribute("w", AttributeId::HELP)), "{@a, @b}");
}

TEST(ItemBodyAttributes, RedefineReplacesAndDeleteRemoves) {
    const Parsed parsed = parse_body(
        "VARIABLE v {\n"
        "    LABEL \"a\";\n"
        "    HELP \"h\";\n"
        "    REDEFINE LABEL \"b\";\n"
        "    DELETE HELP;\n"
        "}\n");
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, "");
    EXPECT_EQ(dumped(parsed.item("v")), "VARIABLE v\n{\n    LABEL \"b\";\n}\n");
}

std::vector<std::string> transaction_numbers(const Value& value) {
    std::vector<std::string> numbers;
    auto number_of = [](const Value& transaction) {
        if (transaction.kind() != ValueKind::COMPOSED) return std::string("not a transaction");
        return static_cast<const ComposedValue&>(transaction).value("number")->to_string();
    };
    if (value.kind() != ValueKind::VALUE_LIST) return {number_of(value)};
    for (const ValuePtr& entry : static_cast<const ValueList&>(value).items()) numbers.push_back(number_of(*entry));
    return numbers;
}

TEST(ItemBodyMerging, TransactionsOfACommandAccumulateInSourceOrder) {
    auto transaction = [](int number) {
        return "    TRANSACTION " + std::to_string(number) + " { REQUEST { a } REPLY { b } }\n";
    };
    struct Case {
        int count;
        ValueKind kind;
        std::vector<std::string> numbers;
    };
    const Case cases[] = {
        {1, ValueKind::COMPOSED, {"1"}},
        {2, ValueKind::VALUE_LIST, {"1", "2"}},
        {3, ValueKind::VALUE_LIST, {"1", "2", "3"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.count);
        std::string body = "COMMAND cmd {\n    NUMBER 7;\n";
        for (int i = 1; i <= c.count; ++i) body += transaction(i);
        body += "}\n";
        const Parsed parsed = parse_body(body);
        EXPECT_TRUE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, "");
        ASSERT_TRUE(parsed.has_attribute("cmd", AttributeId::TRANSACTION));
        const Value& value = parsed.attribute("cmd", AttributeId::TRANSACTION);
        EXPECT_EQ(value.kind(), c.kind);
        EXPECT_EQ(transaction_numbers(value), c.numbers);
        if (c.kind == ValueKind::VALUE_LIST) {
            EXPECT_EQ(static_cast<const ValueList&>(value).size(), c.numbers.size());
        }
    }
}

TEST(ItemBodyMerging, ResponseCodeEntriesAccumulateInSourceOrder) {
    const Parsed parsed = parse_body(
        "RESPONSE_CODES rc {\n"
        "    0, SUCCESS, \"ok\";\n"
        "    1, MISC_ERROR, \"bad\";\n"
        "    2, MISC_WARNING, \"warn\", \"help\";\n"
        "}\n");
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, "");
    ASSERT_TRUE(parsed.has_attribute("rc", AttributeId::response_code));
    const Value& value = parsed.attribute("rc", AttributeId::response_code);
    ASSERT_EQ(value.kind(), ValueKind::VALUE_LIST);
    const auto& list = static_cast<const ValueList&>(value);
    ASSERT_EQ(list.size(), 3U);
    std::vector<std::string> values;
    for (const ValuePtr& entry : list.items()) {
        ASSERT_EQ(entry->kind(), ValueKind::COMPOSED);
        values.push_back(static_cast<const ComposedValue&>(*entry).value("value")->to_string());
    }
    EXPECT_EQ(values, (std::vector<std::string>{"0", "1", "2"}));
}

TEST(ItemBodyFixed, RelationsAndWriteAsOne) {
    struct Case {
        std::string source;
        std::vector<std::pair<AttributeId, std::string>> attributes;  // every attribute set
    };
    const Case cases[] = {
        {"REFRESH r { a, b : c }",
         {{AttributeId::cause_parameter, "{@a, @b}"}, {AttributeId::effected_parameter, "@c"}}},
        {"UNIT u { a : b, c }", {{AttributeId::cause_parameter, "@a"}, {AttributeId::effected_parameter, "{@b, @c}"}}},
        {"REFRESH r { x; : y; }", {{AttributeId::cause_parameter, "@x"}, {AttributeId::effected_parameter, "@y"}}},
        {"WRITE_AS_ONE w { a, b[2], c.d }", {{AttributeId::references, "{@a, @b[2](2), @c.d}"}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const Parsed parsed = parse_body(c.source + "\n");
        EXPECT_TRUE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, "");
        ASSERT_EQ(parsed.description.items.size(), 1U);
        const Item& item = parsed.description.items.items().front();
        std::vector<std::pair<AttributeId, std::string>> attributes;
        for (AttributeId id : item.defined_attributes()) attributes.emplace_back(id, shape(item.attribute(id)));
        EXPECT_EQ(attributes, c.attributes);
    }
}

TEST(ItemBodyFixed, RelationsAcceptConditionalValues) {
    const Parsed parsed = parse_body("UNIT u { IF (x) { a } ELSE { b } : SELECT (s) { CASE 1: c DEFAULT: d } }\n");
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, "");
    EXPECT_EQ(shape(parsed.attribute("u", AttributeId::cause_parameter)), "IF(@x){@a}ELSE{@b}");
    EXPECT_EQ(shape(parsed.attribute("u", AttributeId::effected_parameter)), "SELECT(@s){CASE 1:@c DEFAULT:@d}");
}

TEST(ItemBodyFixed, RelationNeedsAValueBeforeTheColon) {
    for (const std::string type : {"REFRESH", "UNIT"}) {
        SCOPED_TRACE(type);
        const Parsed parsed = parse_body(type + " r { }\n");
        EXPECT_FALSE(parsed.result);
        EXPECT_EQ(parsed.diagnostics,
                  error_line(2, "Expected primary expression but got}") + error_line(2, "Expected : but got }"));
        EXPECT_EQ(parsed.errors, 2);
        EXPECT_TRUE(parsed.description.items.empty());
    }
}

TEST(ItemBodyFixed, EmptyBodiesOfAttributeStatementTypes) {
    const std::string types[] = {"ARRAY",  "AXIS", "BLOCK",  "CHART",  "COLLECTION", "COMMAND",  "CONNECTION",
                                 "EDIT_DISPLAY",   "FILE",   "GRAPH",  "GRID",       "IMAGE",    "ITEM_ARRAY",
                                 "LIST",   "MENU", "METHOD", "RECORD", "SOURCE",     "VARIABLE", "VARIABLE_LIST",
                                 "WAVEFORM"};
    for (const std::string& type : types) {
        SCOPED_TRACE(type);
        const Parsed parsed = parse_body(type + " item {}\n");
        EXPECT_TRUE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, "");
        ASSERT_TRUE(parsed.has("item"));
        EXPECT_TRUE(parsed.item("item").defined_attributes().empty());
    }
}

}  // namespace
}  // namespace edd
