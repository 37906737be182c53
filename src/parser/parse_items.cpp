// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/attribute_table.hpp"
#include "model/value_list.hpp"
#include "parser/parser.hpp"

namespace edd {

// item_body : '{' ( relation | response_codes | references | { attribute_statement } ) '}'
void Parser::parse_item_body(Item& item) {
    DepthGuard guard(*this);
    expect("{");
    switch (item.type()) {
    case ItemType::REFRESH:
    case ItemType::UNIT: {
        ValuePtr cause = parse_conditional(List::VALUES);
        expect(":");
        ValuePtr effect = parse_conditional(List::VALUES);
        item.set_attribute(AttributeId::cause_parameter, cause);
        item.set_attribute(AttributeId::effected_parameter, effect);
        break;
    }
    case ItemType::RESPONSE_CODES:
        while (starts_entry(List::RESPONSE_CODES))
            store_attribute(item, AttributeId::response_code, parse_conditional(List::RESPONSE_CODES));
        break;
    case ItemType::WRITE_AS_ONE: item.set_attribute(AttributeId::references, parse_conditional(List::VALUES)); break;
    default:
        while (!at("}")) parse_attribute_statement(item);
        break;
    }
    expect("}");
}

// attribute_statement : REDEFINE attribute | DELETE attribute_name ';' | attribute
void Parser::parse_attribute_statement(Item& item) {
    if (accept("REDEFINE")) parse_attribute(item, true);
    else if (accept("DELETE")) parse_attribute_deletion(item);
    else parse_attribute(item, false);
}

// attribute : attribute_name value
// A value that the profile refuses is still kept; one that the item type does not define
// is dropped. A redefinition replaces the slot even where attributes accumulate.
void Parser::parse_attribute(Item& item, bool redefine) {
    const std::string_view name = read_identifier(false);
    const AttributeId id = find_attribute_read(name);
    if (!is_valid(id)) fatal(format_message(messages::invalid_attribute_id, {name}));
    ValuePtr value = parse_attribute_value(item, id);
    if (!profile_.allows_attribute(item.type(), id))
        error(format_message(messages::attribute_not_allowed, {name, item_type_word(item), profile_.name()}));
    if (!item_defines_attribute(item.type(), id)) {
        error(format_message(messages::attribute_not_defined, {name, item_type_word(item)}));
        return;
    }
    if (redefine) item.set_attribute(id, value);
    else store_attribute(item, id, value);
}

// deletion : DELETE attribute_name ';'
void Parser::parse_attribute_deletion(Item& item) {
    const std::string_view name = read_identifier(false);
    const AttributeId id = find_attribute_read(name);
    if (!is_valid(id)) fatal(format_message(messages::invalid_attribute_id, {name}));
    expect(";");
    if (!profile_.allows_attribute(item.type(), id))
        error(format_message(messages::attribute_not_allowed, {name, item_type_word(item), profile_.name()}));
    item.remove_attribute(id);
}

// TRANSACTION on a COMMAND and response_code on RESPONSE_CODES accumulate; every other
// attribute is replaced silently, the last one wins.
void Parser::store_attribute(Item& item, AttributeId id, ValuePtr value) {
    const bool merges = (id == AttributeId::TRANSACTION && item.type() == ItemType::COMMAND) ||
                        (id == AttributeId::response_code && item.type() == ItemType::RESPONSE_CODES);
    if (!merges || !item.has_attribute(id)) {
        item.set_attribute(id, std::move(value));
        return;
    }
    const ValuePtr& held = item.attribute(id);
    if (held->kind() == ValueKind::VALUE_LIST) {
        static_cast<ValueList&>(*held).add(*description_.arena, value);
        return;
    }
    auto* list = make<ValueList>();
    list->add(*description_.arena, held);
    list->add(*description_.arena, value);
    item.set_attribute(id, list);
}

// The lists store_attribute extends in place, copied: an imported item's lists are shared
// with the imported file's table, which every IMPORT of the file selects from.
void Parser::unshare_merged_lists(Item& item) {
    for (const AttributeId id : {AttributeId::TRANSACTION, AttributeId::response_code})
        if (item.has_attribute(id) && item.attribute(id)->kind() == ValueKind::VALUE_LIST)
            item.set_attribute(id, item.attribute(id)->clone(*description_.arena));
}

// The grammar of an attribute's value is chosen by the attribute and, for TYPE, by the
// item type.
ValuePtr Parser::parse_attribute_value(const Item& item, AttributeId id) {
    switch (id) {
    case AttributeId::DEFINITION: return parse_method_definition();
    case AttributeId::ELEMENTS: return parse_braced_sequence(List::ELEMENTS);
    case AttributeId::INIT_ACTIONS:
    case AttributeId::EXIT_ACTIONS:
    case AttributeId::PRE_EDIT_ACTIONS:
    case AttributeId::POST_EDIT_ACTIONS:
    case AttributeId::PRE_READ_ACTIONS:
    case AttributeId::POST_READ_ACTIONS:
    case AttributeId::PRE_WRITE_ACTIONS:
    case AttributeId::POST_WRITE_ACTIONS:
    case AttributeId::REFRESH_ACTIONS: return parse_braced_sequence(List::ACTIONS);
    case AttributeId::ITEMS: return parse_braced_sequence(List::MENU_ITEMS);
    case AttributeId::KEY_POINTS: return parse_key_points();
    case AttributeId::MEMBERS: return parse_braced_sequence(List::MEMBERS);
    case AttributeId::PURPOSE: return parse_word_list_attribute(List::PURPOSES);
    case AttributeId::ROLE: return parse_word_list_attribute(List::ROLES);
    case AttributeId::RESPONSE_CODES: return parse_response_codes_attribute();
    case AttributeId::TRANSACTION: return parse_transaction();
    case AttributeId::TYPE:
        switch (item.type()) {
        case ItemType::METHOD: return parse_method_type();
        case ItemType::VARIABLE: return parse_type_specification();
        case ItemType::WAVEFORM: return parse_waveform_type();
        default: return parse_generic_attribute_value();
        }
    case AttributeId::VECTORS: return parse_braced_sequence(List::VECTORS);
    default: return parse_generic_attribute_value();
    }
}

// generic_attribute_value : '{' conditional_value '}' | conditional_value
ValuePtr Parser::parse_generic_attribute_value() {
    if (!accept("{")) return parse_conditional(List::VALUES);
    ValuePtr value = parse_conditional(List::VALUES);
    expect("}");
    return value;
}

}  // namespace edd
