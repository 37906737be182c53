// The document frame: the bare document, used dictionary keys, identification order, items
// in name order, building once, and the guard against use before building.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

#include "model/item.hpp"
#include "xml/xml_names.hpp"
#include "xml_test_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;
using namespace xml_test;

TEST(XmlWriter, EmptyDescriptionGivesTheBareFrame) {
    EXPECT_EQ(build_xml(Description()),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<EDDL version=\"0.1\">\n    <description>\n"
              "    </description>\n</EDDL>\n");
}

TEST(XmlWriter, RefusesUseBeforeBuild) {
    const auto file = std::filesystem::temp_directory_path() / "tarnwick_not_built.xml";
    std::filesystem::remove(file);
    XML_Writer writer(Description{});
    std::ostringstream out;
    const auto expect_guard = [](auto&& call) {
        try {
            call();
            ADD_FAILURE() << "no exception";
        } catch (const std::logic_error& e) {
            EXPECT_STREQ(e.what(), "XML_Writer: Document was not built.");
        }
    };
    expect_guard([&] { writer.save(file.string()); });
    expect_guard([&] { writer.document(); });
    expect_guard([&] { writer.print(out); });
    expect_guard([&] { writer.xml(); });
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(out.str().empty());
}

TEST(XmlWriter, BuildsOnceUnlessForced) {
    XML_Writer writer(description_of({item_with(ItemType::UNIT, "u", {})}));
    writer.build();
    const std::string first = writer.xml();
    Dictionary dictionary;
    dictionary.add({"k", "text"});
    writer.set_dictionary(dictionary);
    writer.build();
    EXPECT_EQ(writer.xml(), first);
    writer.build(true);
    EXPECT_EQ(writer.xml(), document_with("\n        <UNIT id=\"u\">\n        </UNIT>",
                                          "\n    <USED_DICT_KEYS>\n    </USED_DICT_KEYS>"));
    std::ostringstream printed;
    writer.print(printed);
    EXPECT_EQ(printed.str(), writer.xml());
}

TEST(XmlWriter, ListsUsedDictionaryKeysWithTheirTexts) {
    struct Case {
        const char* name;
        std::vector<DictionaryEntry> entries;
        std::string_view expected_section;
    };
    // The item uses the keys "b", "B", "a" and "\xE4" (Latin-1).
    const Case cases[] = {
        {"no dictionary, no section", {}, ""},
        {"unused entries give an empty section", {{"zz", "x"}}, R"(
    <USED_DICT_KEYS>
        <DICTIONARY_KEY id="B"/>
        <DICTIONARY_KEY id="a"/>
        <DICTIONARY_KEY id="b"/>
        <DICTIONARY_KEY id="ä"/>
    </USED_DICT_KEYS>)"},
        {"texts, with blanks (not tabs) at the ends preserved",
         {{"a", " lead"}, {"b", "trail "}, {"B", "\tin side"}, {"\xE4", ""}},
         R"(
    <USED_DICT_KEYS>
        <DICTIONARY_KEY id="B"><DICTIONARY_STRING><string>)" "\t" R"(in side</string></DICTIONARY_STRING></DICTIONARY_KEY>
        <DICTIONARY_KEY id="a"><DICTIONARY_STRING><string xml:space="preserve"> lead</string></DICTIONARY_STRING></DICTIONARY_KEY>
        <DICTIONARY_KEY id="b"><DICTIONARY_STRING><string xml:space="preserve">trail </string></DICTIONARY_STRING></DICTIONARY_KEY>
        <DICTIONARY_KEY id="ä"><DICTIONARY_STRING><string></string></DICTIONARY_STRING></DICTIONARY_KEY>
    </USED_DICT_KEYS>)"},
    };
    const Description description = description_of({item_with(
        ItemType::VARIABLE, "v",
        {{AttributeId::LABEL, dict("b")}, {AttributeId::HELP, list_of(dict("B"), dict("a"), dict("\xE4"))}})});
    const std::string body = R"(
        <VARIABLE id="v">
            <HELP>
                <string dictref="B"/>
                <string dictref="a"/>
                <string dictref="ä"/>
            </HELP>
            <LABEL>
                <string dictref="b"/>
            </LABEL>
        </VARIABLE>)";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Dictionary dictionary;
        for (const DictionaryEntry& entry : c.entries) dictionary.add(entry);
        EXPECT_EQ(build_xml(description, &dictionary), document_with(body, c.expected_section));
    }
}

TEST(XmlWriter, WritesIdentificationInFixedOrderAndItemsByName) {
    Description description = description_of({
        item_with(ItemType::UNIT, "b", {}),
        item_with(ItemType::MENU, "\xC3\xA9", {}),
        item_with(ItemType::BLOCK, "B", {}),
        item_with(ItemType::AXIS, "a", {}),
    });
    description.items.get("a").set_parent("B");
    Identification& id = description.identification;
    id.manufacturer = integer("42");
    id.device_type = ident("dt");
    id.edd_version = make_value<NullValue>();  // present but undefined: not written
    id.manufacturer_ext = str("ext");
    id.dd_revision = integer("1");
    EXPECT_EQ(build_xml(description), document_with(R"(
        <DD_REVISION>
            <integer>1</integer>
        </DD_REVISION>
        <DEVICE_TYPE>
            <reference ref="dt"/>
        </DEVICE_TYPE>
        <MANUFACTURER>
            <integer>42</integer>
        </MANUFACTURER>
        <MANUFACTURER_EXT>
            <string>ext</string>
        </MANUFACTURER_EXT>
        <BLOCK id="B">
        </BLOCK>
        <AXIS id="a" parent="B">
        </AXIS>
        <UNIT id="b">
        </UNIT>
        <MENU id="é">
        </MENU>)"));
}

TEST(XmlWriter, NamesOnlyScalarKinds) {
    EXPECT_EQ(type_to_xname(ValueKind::DATA_MASK), "data_item_mask");
    for (auto kind : {ValueKind::UNDEFINED, ValueKind::DICTIONARY_REFERENCE, ValueKind::KEYWORD, ValueKind::CODE,
                      ValueKind::METHOD_CALL, ValueKind::PARAMETER, static_cast<ValueKind>(1000)}) {
        SCOPED_TRACE(static_cast<int>(kind));
        try {
            type_to_xname(kind);
            ADD_FAILURE() << "no exception";
        } catch (const std::logic_error& e) {
            EXPECT_STREQ(e.what(), "type_to_xname: unknown type");
        }
    }
}

}  // namespace
}  // namespace edd
