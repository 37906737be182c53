// Helpers shared by the writer tests: builders for conditionals and items, the frame around
// a description's body, and a build that checks every document parses back as UTF-8 XML.
#pragma once

#include <gtest/gtest.h>

#include <pugixml.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/conditionals.hpp"
#include "model/description.hpp"
#include "model/dictionary.hpp"
#include "model/model_helpers.hpp"
#include "xml/document_text.hpp"
#include "xml/xml_writer.hpp"

namespace edd::xml_test {

inline constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// Fails the current test unless the text is UTF-8 and well-formed XML.
inline void expect_well_formed(const std::string& xml) {
    EXPECT_TRUE(is_well_formed_utf8(xml));
    pugi::xml_document parsed;
    const pugi::xml_parse_result result = parsed.load_buffer(xml.data(), xml.size(), pugi::parse_default,
                                                             pugi::encoding_utf8);
    EXPECT_TRUE(result) << result.description() << " at " << result.offset;
}

inline std::string build_xml(const Description& description, const Dictionary* dictionary = nullptr) {
    XML_Writer writer(description);
    if (dictionary) writer.set_dictionary(*dictionary);
    writer.build();
    std::string xml = writer.xml();
    expect_well_formed(xml);
    return xml;
}

// The whole document around a "description" body written at depth 2.
inline std::string document_with(std::string_view body, std::string_view before_description = "") {
    return std::string(declaration) + "<EDDL version=\"0.1\">" + std::string(before_description) +
           "\n    <description>" + std::string(body) + "\n    </description>\n</EDDL>\n";
}

inline ValuePtr if_value(const ValuePtr& condition, const ValuePtr& then_value) {
    ValuePtr value = make_value<IfConditional>();
    auto& choice = static_cast<IfConditional&>(*value);
    choice.set_condition(condition);
    choice.set_then(then_value);
    return value;
}

inline ValuePtr if_else_value(const ValuePtr& condition, const ValuePtr& then_value, const ValuePtr& else_value) {
    ValuePtr value = if_value(condition, then_value);
    static_cast<IfConditional&>(*value).set_else(else_value);
    return value;
}

inline ValuePtr select_value(const ValuePtr& selector, const std::vector<std::pair<ValuePtr, ValuePtr>>& cases) {
    ValuePtr value = make_value<SelectConditional>();
    auto& choice = static_cast<SelectConditional&>(*value);
    choice.set_selector(selector);
    for (const auto& [label, result] : cases) choice.add_case(label, result);
    return value;
}

inline Item item_with(ItemType type, std::string name, std::vector<std::pair<AttributeId, ValuePtr>> attributes,
                      std::string file = "dev.ddl") {
    Item item(type, std::move(name), Token(IDENTIFIER, "x", file, 1));
    for (const auto& [id, value] : attributes) item.set_attribute(id, value);
    return item;
}

inline Description description_of(std::vector<Item> items) {
    Description description;
    for (Item& item : items) description.items.insert(std::move(item));
    return description;
}

}  // namespace edd::xml_test
