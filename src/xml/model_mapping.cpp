// How items, attributes, members and every value kind become elements. The frame around
// them, and the indentation helpers, are in xml_writer.cpp.
#include <cstdint>
#include <string>
#include <string_view>

#include "model/attribute.hpp"
#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/conditionals.hpp"
#include "model/expression.hpp"
#include "model/item.hpp"
#include "model/parameter_value.hpp"
#include "model/reference_value.hpp"
#include "model/simple_value.hpp"
#include "model/type_value.hpp"
#include "model/value_list.hpp"
#include "xml/xml_names.hpp"
#include "xml/xml_writer.hpp"

namespace edd {

namespace {

// Conditions, case labels, code and expressions render with separating blanks and line
// breaks at their ends; the document carries them without.
std::string trimmed_text(const Value& value) {
    constexpr std::string_view blanks = " \t\n\r";
    const std::string text = value.to_string();
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return std::string();
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// TRANSACTION lists of COMMANDs, and response_code lists of RESPONSE_CODES, give one
// element per entry rather than one for the list.
bool is_repeated(const Item& item, AttributeId id, const Value& value) {
    if (value.kind() != ValueKind::VALUE_LIST) return false;
    return (item.type() == ItemType::COMMAND && id == AttributeId::TRANSACTION) ||
           (item.type() == ItemType::RESPONSE_CODES && id == AttributeId::response_code);
}

// The transaction's "number" member becomes the element's attribute; write_member drops it.
void set_transaction_number(DomElement element, const Value& value) {
    if (value.kind() != ValueKind::COMPOSED) return;
    const auto& composed = static_cast<const ComposedValue&>(value);
    if (composed.contains("number")) element.set_attribute("number", composed.value("number")->to_string());
}

}  // namespace

void XML_Writer::write_object(DomElement parent, const Item& item) {
    DomElement element = open_block(parent, item_type_word(item));
    element.set_attribute("id", item.name());
    if (item.has_parent()) element.set_attribute("parent", item.parent());
    if (item.type() == ItemType::RESPONSE_CODES) {
        // The codes go straight into the item: there is no response_code wrapper.
        if (item.has_attribute(AttributeId::response_code))
            write_value(element, *item.attribute(AttributeId::response_code));
    } else {
        if (item.has_attribute(AttributeId::of_type))
            write_attribute(element, item, AttributeId::of_type, *item.attribute(AttributeId::of_type));
        for (AttributeId id : item.defined_attributes())
            if (id != AttributeId::of_type) write_attribute(element, item, id, *item.attribute(id));
    }
    close_block(element);
}

void XML_Writer::write_attribute(DomElement parent, const Item& item, AttributeId id, const Value& value) {
    if (!is_repeated(item, id, value)) {
        write_attribute_element(parent, id, value);
        return;
    }
    for (const ValuePtr& entry : static_cast<const ValueList&>(value).items())
        write_attribute_element(parent, id, *entry);
}

void XML_Writer::write_attribute_element(DomElement parent, AttributeId id, const Value& value) {
    DomElement element = open_block(parent, name_of(id));
    if (id == AttributeId::TRANSACTION) set_transaction_number(element, value);
    write_value(element, value);
    close_block(element);
}

void XML_Writer::write_member(DomElement parent, const Attribute& member) {
    if (member.name() == "number") return;
    if (member.name().empty()) {
        write_value(parent, *member.value());
        return;
    }
    DomElement element = open_block(parent, member.name());
    write_value(element, *member.value());
    close_block(element);
}

void XML_Writer::write_value(DomElement parent, const Value& value) {
    switch (value.kind()) {
    case ValueKind::UNDEFINED:
    case ValueKind::OPERATOR:
    case ValueKind::CASE: return;
    case ValueKind::STRING:
    case ValueKind::INTEGER:
    case ValueKind::FLOAT:
    case ValueKind::DATA_MASK: {
        const std::string& text = static_cast<const SimpleValue&>(value).text();
        DomElement element = append(parent, type_to_xname(value.kind()));
        if (value.kind() == ValueKind::STRING) write_string_text(element, text);
        else element.append_text(text);
        return;
    }
    case ValueKind::IDENTIFIER:
        append(parent, "reference").set_attribute("ref", static_cast<const SimpleValue&>(value).text());
        return;
    case ValueKind::DICTIONARY_REFERENCE:
        // The text itself is listed once, under USED_DICT_KEYS.
        append(parent, "string").set_attribute("dictref", static_cast<const SimpleValue&>(value).text());
        return;
    case ValueKind::KEYWORD: append(parent, static_cast<const SimpleValue&>(value).text()); return;
    case ValueKind::TYPE: write_type(parent, static_cast<const TypeValue&>(value)); return;
    case ValueKind::VALUE_LIST: {
        const auto& list = static_cast<const ValueList&>(value);
        if (list.name().empty()) {
            for (const ValuePtr& entry : list.items()) write_value(parent, *entry);
            return;
        }
        DomElement element = open_block(parent, list.name());
        for (const ValuePtr& entry : list.items()) write_value(element, *entry);
        close_block(element);
        return;
    }
    case ValueKind::CODE:
    case ValueKind::EXPRESSION:
    case ValueKind::METHOD_CALL:
        append(parent, value.kind() == ValueKind::CODE ? "code" : "expression").append_text(trimmed_text(value));
        return;
    case ValueKind::IF_CONDITIONAL: write_if(parent, static_cast<const IfConditional&>(value)); return;
    case ValueKind::SELECT_CONDITIONAL: write_select(parent, static_cast<const SelectConditional&>(value)); return;
    case ValueKind::COMPOSED: {
        const auto& composed = static_cast<const ComposedValue&>(value);
        if (composed.name().empty()) {
            for (const Attribute& member : composed.attributes()) write_member(parent, member);
            return;
        }
        DomElement element = open_block(parent, composed.name());
        for (const Attribute& member : composed.attributes()) write_member(element, member);
        close_block(element);
        return;
    }
    case ValueKind::REFERENCE: {
        const auto& reference = static_cast<const ReferenceValue&>(value);
        if (!reference.has_argument()) {
            append(parent, "reference").set_attribute("ref", reference.name());
            return;
        }
        DomElement element = open_block(parent, "reference");
        element.set_attribute("ref", reference.name());
        write_value(element, *reference.argument());
        close_block(element);
        return;
    }
    case ValueKind::PARAMETER: {
        const auto& parameter = static_cast<const ParameterValue&>(value);
        DomElement element = append(parent, parameter_element_name(parameter.type()));
        const bool by_reference = parameter.mode() == static_cast<std::uint32_t>(ParameterMode::CALL_BY_REFERENCE);
        element.set_attribute("call_by_reference", by_reference ? "true" : "false");
        element.append_text(parameter.name());
        return;
    }
    }
    // A kind code outside the enumeration writes nothing, like the kinds that have no element.
}

// The type element stays empty: its members and values follow it in the parent, at the
// same depth. Readers of the document rely on that layout.
void XML_Writer::write_type(DomElement parent, const TypeValue& type) {
    DomElement element = append(parent, type.name());
    if (type.size() != 0) element.set_attribute("size", std::to_string(type.size()));
    for (const auto& [name, member] : type.attribute_map()) write_member(parent, member);
    for (const ValuePtr& entry : type.values()) write_value(parent, *entry);
}

void XML_Writer::write_if(DomElement parent, const IfConditional& choice) {
    DomElement element = open_block(parent, "IF");
    element.set_attribute("condition", trimmed_text(choice.condition()));
    write_value(element, choice.then_value());
    if (choice.has_else()) {
        DomElement otherwise = open_block(element, "ELSE");
        write_value(otherwise, choice.else_value());
        close_block(otherwise);
    }
    close_block(element);
}

void XML_Writer::write_select(DomElement parent, const SelectConditional& choice) {
    DomElement element = open_block(parent, "SELECT");
    element.set_attribute("condition", trimmed_text(choice.selector()));
    for (std::size_t i = 0; i < choice.case_count(); ++i) {
        const SelectConditional::Case& branch = choice.case_at(i);
        DomElement label = open_block(element, "CASE");
        label.set_attribute("value", trimmed_text(branch.label()));
        write_value(label, branch.value());
        close_block(label);
    }
    if (choice.has_default()) {
        DomElement fallback = open_block(element, "DEFAULT");
        write_value(fallback, choice.default_value());
        close_block(fallback);
    }
    close_block(element);
}

}  // namespace edd
