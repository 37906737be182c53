// SPDX-License-Identifier: Apache-2.0
// How items, attributes, members and every value kind become elements. The frame around
// them is in xml_writer.cpp.
#include <charconv>
#include <cstdint>
#include <span>
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
#include "text/byte_copy.hpp"
#include "xml/xml_output.hpp"
#include "xml/xml_writer.hpp"

namespace edd {

namespace {

template <std::size_t N>
[[gnu::noinline]] void write_scalar(XmlOutput& out, const char (&element)[N], const Value& value) {
    out.line_text(element, static_cast<const SimpleValue&>(value).text());
}

void append_enclosed(std::string& text, char open, const Value& value, char close) {
    text += open;
    text += static_cast<const SimpleValue&>(value).text();
    text += close;
}

// The source form of a value as Value::to_string gives it, appended to `text`. The kinds
// conditions and expressions are made of are put together here, without a string of their
// own per part.
void append_source_text(std::string& text, const Value& value) {
    switch (value.kind()) {
    case ValueKind::UNDEFINED: return;
    case ValueKind::STRING: append_enclosed(text, '"', value, '"'); return;
    case ValueKind::DICTIONARY_REFERENCE: append_enclosed(text, '[', value, ']'); return;
    case ValueKind::INTEGER:
    case ValueKind::FLOAT:
    case ValueKind::KEYWORD:
    case ValueKind::IDENTIFIER:
    case ValueKind::OPERATOR:
    case ValueKind::DATA_MASK: text += static_cast<const SimpleValue&>(value).text(); return;
    case ValueKind::EXPRESSION:
        for (const ValuePtr& part : static_cast<const Expression&>(value).parts()) {
            append_source_text(text, *part);
            text += ' ';
        }
        return;
    case ValueKind::REFERENCE: {
        const auto& reference = static_cast<const ReferenceValue&>(value);
        text += reference.name();
        if (!reference.has_argument()) return;
        text += '(';
        append_source_text(text, *reference.argument());
        text += ')';
        return;
    }
    case ValueKind::TYPE:
    case ValueKind::VALUE_LIST:
    case ValueKind::CODE:
    case ValueKind::IF_CONDITIONAL:
    case ValueKind::SELECT_CONDITIONAL:
    case ValueKind::COMPOSED:
    case ValueKind::METHOD_CALL:
    case ValueKind::PARAMETER:
    case ValueKind::CASE: text += value.to_string(); return;
    }
}

// Conditions, case labels, code and expressions render with separating blanks and line
// breaks at their ends; the document carries them without.
std::string_view trimmed(std::string_view text) {
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    while (!text.empty() && blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && blank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view source_text(XmlOutput& out, const Value& value) {
    std::string& text = out.scratch();
    append_source_text(text, value);
    return trimmed(text);
}

template <std::size_t N, std::size_t M>
[[gnu::noinline]] void write_empty(XmlOutput& out, const char (&element)[N], const char (&attribute)[M],
                                   const Value& value) {
    out.line_empty(element, attribute, static_cast<const SimpleValue&>(value).text());
}

[[gnu::noinline]] void write_keyword(XmlOutput& out, const Value& value) {
    out.line_empty(static_cast<const SimpleValue&>(value).text());
}

// The code as CodeValue::to_string spells it (each token and a blank, strings quoted
// again), put together in the scratch text at once: its tokens are many and short.
[[gnu::noinline]] void write_code(XmlOutput& out, const CodeValue& code) {
    std::size_t size = 0;
    for (const CodeToken& token : code.tokens()) size += token.size + (token.kind == STRING ? 3 : 1);
    char* const text = out.scratch_bytes(size);
    char* at = text;
    for (const CodeToken& token : code.tokens()) {
        if (token.kind == STRING) *at++ = '"';
        at = copy_bytes(at, token.data, token.size);
        if (token.kind == STRING) *at++ = '"';
        *at++ = ' ';
    }
    out.open_line("code").text(trimmed({text, size})).close_line("code");
}

[[gnu::noinline]] void write_expression(XmlOutput& out, const Value& value) {
    out.open_line("expression").text(source_text(out, value)).close_line("expression");
}

[[gnu::noinline]] void write_parameter(XmlOutput& out, const ParameterValue& parameter) {
    const bool by_reference = parameter.mode() == ParameterMode::CALL_BY_REFERENCE;
    const std::string_view element = parameter.type().element;
    out.open_line(element)
        .attribute("call_by_reference", by_reference ? "true" : "false")
        .text(parameter.name())
        .close_line(element);
}

// TRANSACTION lists of COMMANDs, and response_code lists of RESPONSE_CODES, give one
// element per entry rather than one for the list.
bool is_repeated(const Item& item, AttributeId id, const Value& value) {
    if (value.kind() != ValueKind::VALUE_LIST) return false;
    return (item.type() == ItemType::COMMAND && id == AttributeId::TRANSACTION) ||
           (item.type() == ItemType::RESPONSE_CODES && id == AttributeId::response_code);
}

// The transaction's "number" member becomes the element's attribute; write_member drops it.
void write_transaction_number(XmlOutput& out, const Value& value) {
    if (value.kind() != ValueKind::COMPOSED) return;
    const auto& composed = static_cast<const ComposedValue&>(value);
    if (composed.contains("number")) out.attribute("number", source_text(out, *composed.value("number")));
}

}  // namespace

void XML_Writer::write_object(XmlOutput& out, const Item& item) const {
    const std::string_view word = item_type_word(item);
    out.open_block(XmlOutput::OwnName{word}).attribute("id", item.name());
    if (item.has_parent()) out.attribute("parent", item.parent());
    if (item.type() == ItemType::RESPONSE_CODES) {
        // The codes go straight into the item: there is no response_code wrapper.
        if (item.has_attribute(AttributeId::response_code))
            write_value(out, *item.attribute(AttributeId::response_code));
    } else {
        // of_type comes first wherever it was given. The slots are in code order, and its code
        // is among the last: the look starts from the end.
        const std::span<const Item::Slot> slots = item.attributes();
        for (auto slot = slots.rbegin(); slot != slots.rend() && code(slot->id) >= code(AttributeId::of_type); ++slot)
            if (slot->id == AttributeId::of_type) write_attribute(out, item, slot->id, *slot->value);
        for (const Item::Slot& slot : item.attributes())
            if (slot.id != AttributeId::of_type) write_attribute(out, item, slot.id, *slot.value);
    }
    out.close_block(word);
}

void XML_Writer::write_attribute(XmlOutput& out, const Item& item, AttributeId id, const Value& value) const {
    if (!is_repeated(item, id, value)) {
        write_attribute_element(out, id, value);
        return;
    }
    for (const ValuePtr& entry : static_cast<const ValueList&>(value).items()) write_attribute_element(out, id, *entry);
}

void XML_Writer::write_attribute_element(XmlOutput& out, AttributeId id, const Value& value) const {
    const std::string_view name = code(id) < attribute_elements_.size() ? attribute_elements_[code(id)] : name_of(id);
    out.open_block(XmlOutput::OwnName{name});
    if (id == AttributeId::TRANSACTION) write_transaction_number(out, value);
    write_value(out, value);
    out.close_block(name);
}

// A type's attributes may be named by the source; an entry's fields and the names of
// entries and lists are the parser's own words (see write_composed).
void XML_Writer::write_member(XmlOutput& out, const Attribute& member, bool own_name) const {
    if (member.name == "number") return;
    if (member.name.empty()) {
        write_value(out, *member.value);
        return;
    }
    if (own_name) out.open_block(XmlOutput::OwnName{member.name});
    else out.open_block(member.name);
    write_value(out, *member.value);
    out.close_block(member.name);
}

// A dispatch only: each kind's steps are a call of their own, so that the small ones do
// not pay for the registers the largest one needs.
void XML_Writer::write_value(XmlOutput& out, const Value& value) const {
    switch (value.kind()) {
    case ValueKind::UNDEFINED:
    case ValueKind::OPERATOR:
    case ValueKind::CASE: return;
    case ValueKind::STRING: return write_string(out, static_cast<const SimpleValue&>(value).text(), true);
    case ValueKind::INTEGER: return write_scalar(out, "integer", value);
    case ValueKind::FLOAT: return write_scalar(out, "float", value);
    case ValueKind::DATA_MASK: return write_scalar(out, "data_item_mask", value);
    case ValueKind::IDENTIFIER: return write_empty(out, "reference", "ref", value);
    // The text itself is listed once, under USED_DICT_KEYS.
    case ValueKind::DICTIONARY_REFERENCE: return write_empty(out, "string", "dictref", value);
    case ValueKind::KEYWORD: return write_keyword(out, value);
    case ValueKind::TYPE: return write_type(out, static_cast<const TypeValue&>(value));
    case ValueKind::VALUE_LIST: return write_list(out, static_cast<const ValueList&>(value));
    case ValueKind::CODE: return write_code(out, static_cast<const CodeValue&>(value));
    case ValueKind::EXPRESSION:
    case ValueKind::METHOD_CALL: return write_expression(out, value);
    case ValueKind::IF_CONDITIONAL: return write_if(out, static_cast<const IfConditional&>(value));
    case ValueKind::SELECT_CONDITIONAL: return write_select(out, static_cast<const SelectConditional&>(value));
    case ValueKind::COMPOSED: return write_composed(out, static_cast<const ComposedValue&>(value));
    case ValueKind::REFERENCE: return write_reference(out, static_cast<const ReferenceValue&>(value));
    case ValueKind::PARAMETER: return write_parameter(out, static_cast<const ParameterValue&>(value));
    }
    // A kind code outside the enumeration writes nothing, like the kinds that have no element.
}

void XML_Writer::write_list(XmlOutput& out, const ValueList& list) const {
    if (!list.name().empty()) out.open_block(XmlOutput::OwnName{list.name()});
    for (const ValuePtr& entry : list.items()) write_value(out, *entry);
    if (!list.name().empty()) out.close_block(list.name());
}

// Entries, their fields and lists are named only by the parser, with words of its own
// (ComposedBuilder, ListBuilder): valid names, which need no look.
void XML_Writer::write_composed(XmlOutput& out, const ComposedValue& composed) const {
    if (!composed.name().empty()) out.open_block(XmlOutput::OwnName{composed.name()});
    for (const Attribute& member : composed.attributes()) write_member(out, member, true);
    if (!composed.name().empty()) out.close_block(composed.name());
}

void XML_Writer::write_reference(XmlOutput& out, const ReferenceValue& reference) const {
    if (!reference.has_argument()) {
        out.line_empty("reference", "ref", reference.name());
        return;
    }
    out.open_block("reference").attribute("ref", reference.name());
    write_value(out, *reference.argument());
    out.close_block("reference");
}

// The type element stays empty: its members and values follow it in the parent, at the
// same depth. Readers of the document rely on that layout.
void XML_Writer::write_type(XmlOutput& out, const TypeValue& type) const {
    if (type.size() == 0) {
        out.line_empty(type.name());
    } else {
        out.open_line(type.name());
        char digits[24];
        const char* const end = std::to_chars(digits, digits + sizeof digits, type.size()).ptr;
        out.attribute("size", std::string_view(digits, static_cast<std::size_t>(end - digits))).close_line(type.name());
    }
    for (const Attribute& member : type.attributes()) write_member(out, member, false);
    for (const ValuePtr& entry : type.values()) write_value(out, *entry);
}

void XML_Writer::write_if(XmlOutput& out, const IfConditional& choice) const {
    out.open_block("IF").attribute("condition", source_text(out, choice.condition()));
    write_value(out, choice.then_value());
    if (choice.has_else()) {
        out.open_block("ELSE");
        write_value(out, choice.else_value());
        out.close_block("ELSE");
    }
    out.close_block("IF");
}

void XML_Writer::write_select(XmlOutput& out, const SelectConditional& choice) const {
    out.open_block("SELECT").attribute("condition", source_text(out, choice.selector()));
    for (std::size_t i = 0; i < choice.case_count(); ++i) {
        const SelectConditional::Case& branch = choice.case_at(i);
        out.open_block("CASE").attribute("value", source_text(out, branch.label()));
        write_value(out, branch.value());
        out.close_block("CASE");
    }
    if (choice.has_default()) {
        out.open_block("DEFAULT");
        write_value(out, choice.default_value());
        out.close_block("DEFAULT");
    }
    out.close_block("SELECT");
}

}  // namespace edd
