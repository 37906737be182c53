// The mapping of values, attributes and items onto elements, with their exact layout.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/expression.hpp"
#include "model/parameter_value.hpp"
#include "model/reference_value.hpp"
#include "model/type_value.hpp"
#include "xml_test_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;
using namespace xml_test;

// What a value writes inside a LABEL attribute, with the 16 blanks of that depth removed
// from every line, so expectations read from column 0.
std::string label_content(const ValuePtr& value) {
    const Description description = description_of({item_with(ItemType::VARIABLE, "v", {{AttributeId::LABEL, value}})});
    const std::string xml = build_xml(description);
    const std::string head = "\n        <VARIABLE id=\"v\">\n            <LABEL>";
    const std::string tail = "\n            </LABEL>\n        </VARIABLE>";
    const std::string frame = document_with(head + tail);
    const std::size_t split = frame.find(tail);
    if (xml.compare(0, split, frame, 0, split) != 0 || !xml.ends_with(frame.substr(split))) return "bad frame: " + xml;
    std::string content = xml.substr(split, xml.size() - frame.size());
    const std::string level = "\n" + std::string(16, ' ');
    for (std::size_t at = content.find(level); at != std::string::npos; at = content.find(level, at + 1))
        content.erase(at + 1, 16);
    return content;
}

ValuePtr composed(std::string name, const std::vector<std::pair<std::string, ValuePtr>>& members) {
    ValuePtr value = make_value<ComposedValue>(std::move(name));
    for (const auto& [member, member_value] : members) static_cast<ComposedValue&>(*value).set(member, member_value);
    return value;
}

ValuePtr named_list(std::string name, const std::vector<ValuePtr>& items) {
    ValuePtr value = make_value<ValueList>(std::move(name));
    for (const ValuePtr& item : items) static_cast<ValueList&>(*value).add(item);
    return value;
}

ValuePtr type_value() {
    ValuePtr value = make_value<TypeValue>("INTEGER", 4);
    auto& type = static_cast<TypeValue&>(*value);
    type.set_attribute(Attribute("b", integer("2")));
    type.set_attribute(Attribute("number", integer("9")));
    type.set_attribute(Attribute("a", integer("1")));
    type.set_attribute(Attribute("", str("flat")));
    type.add_value(ident("y"));
    return value;
}

ValuePtr select_with_default() {
    ValuePtr value = select_value(ident("s"), {{integer("1"), str("one")}, {integer("2"), str("two")}});
    static_cast<SelectConditional&>(*value).set_default(str("other"));
    return value;
}

ValuePtr reference_with_argument() {
    ValuePtr value = make_value<ReferenceValue>("arr");
    static_cast<ReferenceValue&>(*value).set_argument(integer("3"));
    return value;
}

TEST(XmlMapping, WritesEveryValueKind) {
    const ValuePtr a_gt_1 = make_value<Expression>(ident("a"), op(">"), integer("1"));
    const ValuePtr sum = make_value<Expression>(ident("a"), op("+"), ident("b"));
    const std::vector<Token> code_tokens = {ident_token("x"), punct('='), string_token("s"), punct(';')};
    const struct Case {
        const char* name;
        ValuePtr value;
        std::string expected;
    } cases[] = {
        {"string", str("Temp"), "\n<string>Temp</string>"},
        {"empty string keeps its text node", str(""), "\n<string></string>"},
        {"leading blank", str(" x"), "\n<string xml:space=\"preserve\"> x</string>"},
        {"trailing blank", str("x "), "\n<string xml:space=\"preserve\">x </string>"},
        {"inner blank only", str("a b"), "\n<string>a b</string>"},
        {"integer as written", integer("0x1F"), "\n<integer>0x1F</integer>"},
        {"float", simple(ValueKind::FLOAT, "1.5e3"), "\n<float>1.5e3</float>"},
        {"data item mask", simple(ValueKind::DATA_MASK, "3"), "\n<data_item_mask>3</data_item_mask>"},
        {"identifier", ident("x"), "\n<reference ref=\"x\"/>"},
        {"dictionary reference", dict("k"), "\n<string dictref=\"k\"/>"},
        {"keyword", keyword("READ_WRITE"), "\n<READ_WRITE/>"},
        {"operator writes nothing", op("+"), ""},
        {"undefined writes nothing", make_value<NullValue>(), ""},
        {"case alone writes nothing", make_value<SelectConditional::Case>(integer("1"), str("x")), ""},
        {"type: empty element, then members by name and values, in the parent", type_value(),
         "\n<INTEGER size=\"4\"/>\n<string>flat</string>\n<a>\n    <integer>1</integer>\n</a>"
         "\n<b>\n    <integer>2</integer>\n</b>\n<reference ref=\"y\"/>"},
        {"type without size", make_value<TypeValue>("FLOAT"), "\n<FLOAT/>"},
        {"named list, unnamed list inside flattened",
         named_list("items", {integer("1"), list_of(integer("2"), integer("3"))}),
         "\n<items>\n    <integer>1</integer>\n    <integer>2</integer>\n    <integer>3</integer>\n</items>"},
        {"empty named list still closes", named_list("items", {}), "\n<items>\n</items>"},
        {"unnamed list", list_of(ident("a"), ident("b")), "\n<reference ref=\"a\"/>\n<reference ref=\"b\"/>"},
        {"code text trimmed", make_value<CodeValue>("\n\t x = 1;\r\n "), "\n<code>x = 1;</code>"},
        {"code tokens", make_value<CodeValue>(code_tokens), "\n<code>x = \"s\" ;</code>"},
        {"expression trimmed at the ends only", make_value<Expression>(op("("), sum, op(")")),
         "\n<expression>( a + b  )</expression>"},
        {"if without else", if_value(a_gt_1, integer("1")),
         "\n<IF condition=\"a > 1\">\n    <integer>1</integer>\n</IF>"},
        {"if with else", if_else_value(a_gt_1, integer("1"), integer("2")),
         "\n<IF condition=\"a > 1\">\n    <integer>1</integer>"
         "\n    <ELSE>\n        <integer>2</integer>\n    </ELSE>\n</IF>"},
        {"select", select_with_default(),
         "\n<SELECT condition=\"s\">\n    <CASE value=\"1\">\n        <string>one</string>\n    </CASE>"
         "\n    <CASE value=\"2\">\n        <string>two</string>\n    </CASE>"
         "\n    <DEFAULT>\n        <string>other</string>\n    </DEFAULT>\n</SELECT>"},
        {"nested beyond level five",
         if_value(ident("a"), if_value(ident("b"), if_else_value(ident("c"), str("x"), op("-")))),
         "\n<IF condition=\"a\">\n    <IF condition=\"b\">\n        <IF condition=\"c\">"
         "\n            <string>x</string>"
         "\n            <ELSE>\n            </ELSE>\n        </IF>\n    </IF>\n</IF>"},
        {"named composed: number dropped, unnamed member flattened",
         composed("element", {{"element_index", integer("1")}, {"number", integer("9")}, {"", ident("x")},
                              {"description", str("d")}}),
         "\n<element>\n    <element_index>\n        <integer>1</integer>\n    </element_index>"
         "\n    <reference ref=\"x\"/>\n    <description>\n        <string>d</string>\n    </description>\n</element>"},
        {"unnamed composed", composed("", {{"item", ident("m")}}),
         "\n<item>\n    <reference ref=\"m\"/>\n</item>"},
        {"reference", make_value<ReferenceValue>("r"), "\n<reference ref=\"r\"/>"},
        {"reference with argument", reference_with_argument(),
         "\n<reference ref=\"arr\">\n    <integer>3</integer>\n</reference>"},
        {"parameter by reference", make_value<ParameterValue>(2, 1, "x"), "\n<int call_by_reference=\"true\">x</int>"},
        {"parameter by value", make_value<ParameterValue>(1, 0, "c"),
         "\n<unsigned_char call_by_reference=\"false\">c</unsigned_char>"},
        {"other passing mode", make_value<ParameterValue>(9, 2, "i"),
         "\n<DD_ITEM call_by_reference=\"false\">i</DD_ITEM>"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(label_content(c.value), c.expected);
    }
}

TEST(XmlMapping, OrdersAttributesAndWritesResponseCodesBare) {
    const Description description = description_of({
        item_with(ItemType::VARIABLE, "v",
                  {{AttributeId::HELP, str("h")},
                   {AttributeId::of_type, ident("t")},
                   {AttributeId::ACCESS, keyword("R")}}),
        item_with(ItemType::RESPONSE_CODES, "rc1",
                  {{AttributeId::LABEL, str("ignored")},
                   {AttributeId::response_code, list_of(integer("1"), integer("2"))}}),
        item_with(ItemType::RESPONSE_CODES, "rc2", {}),
    });
    EXPECT_EQ(build_xml(description), document_with(R"(
        <RESPONSE_CODES id="rc1">
            <integer>1</integer>
            <integer>2</integer>
        </RESPONSE_CODES>
        <RESPONSE_CODES id="rc2">
        </RESPONSE_CODES>
        <VARIABLE id="v">
            <of_type>
                <reference ref="t"/>
            </of_type>
            <ACCESS>
                <R/>
            </ACCESS>
            <HELP>
                <string>h</string>
            </HELP>
        </VARIABLE>)"));
}

TEST(XmlMapping, WritesOneTransactionElementPerListEntry) {
    const auto transaction = [](const char* number, const char* request) {
        return composed("", {{"number", integer(number)}, {"REQUEST", ident(request)}});
    };
    const Description description = description_of({
        item_with(ItemType::COMMAND, "c1",
                  {{AttributeId::TRANSACTION, list_of(transaction("1", "a"), transaction("0x2", "b"))}}),
        item_with(ItemType::COMMAND, "c2", {{AttributeId::TRANSACTION, transaction("5", "c")}}),
        // Only COMMANDs repeat the element; elsewhere the list is one value.
        item_with(ItemType::COLLECTION, "c3", {{AttributeId::TRANSACTION, list_of(transaction("7", "d"))}}),
    });
    EXPECT_EQ(build_xml(description), document_with(R"(
        <COMMAND id="c1">
            <TRANSACTION number="1">
                <REQUEST>
                    <reference ref="a"/>
                </REQUEST>
            </TRANSACTION>
            <TRANSACTION number="0x2">
                <REQUEST>
                    <reference ref="b"/>
                </REQUEST>
            </TRANSACTION>
        </COMMAND>
        <COMMAND id="c2">
            <TRANSACTION number="5">
                <REQUEST>
                    <reference ref="c"/>
                </REQUEST>
            </TRANSACTION>
        </COMMAND>
        <COLLECTION id="c3">
            <TRANSACTION>
                <REQUEST>
                    <reference ref="d"/>
                </REQUEST>
            </TRANSACTION>
        </COLLECTION>)"));
}

TEST(XmlMapping, ConvertsLatin1AndControlCharactersToUtf8) {
    const Description description = description_of({item_with(
        ItemType::VARIABLE, "T\xE4st",
        {{AttributeId::LABEL, str("caf\xE9\x01")}, {AttributeId::HELP, str("\xF0\x9F\x98\x80 ok")},
         {AttributeId::CLASS, keyword("\xC4")}})});
    EXPECT_EQ(build_xml(description),
              document_with("\n        <VARIABLE id=\"T\xC3\xA4st\">"
                            "\n            <CLASS>\n                <\xC3\x84/>\n            </CLASS>"
                            "\n            <HELP>\n                <string>\xF0\x9F\x98\x80 ok</string>\n            </HELP>"
                            "\n            <LABEL>\n                <string>caf\xC3\xA9\xEF\xBF\xBD</string>\n            </LABEL>"
                            "\n        </VARIABLE>"));
}

TEST(XmlMapping, StopsTheBuildAtAnElementNameTheDocumentRefuses) {
    const ValuePtr unknown_type = make_value<ParameterValue>(10, 0, "p");
    const Item method = item_with(ItemType::METHOD, "m", {{AttributeId::method_parameters, unknown_type}});
    XML_Writer writer(description_of({method}));
    EXPECT_THROW(writer.build(), std::logic_error);
    EXPECT_THROW(writer.xml(), std::logic_error);  // still not built
}

}  // namespace
}  // namespace edd
