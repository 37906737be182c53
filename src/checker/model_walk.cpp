// SPDX-License-Identifier: Apache-2.0
#include "checker/model_walk.hpp"

#include <algorithm>
#include <string_view>

#include "model/composed_value.hpp"
#include "model/conditionals.hpp"
#include "model/expression.hpp"
#include "model/reference_value.hpp"
#include "model/simple_value.hpp"
#include "model/type_value.hpp"
#include "model/value_list.hpp"

namespace edd {

namespace {

// The action lists are the attributes named *_ACTIONS.
Place place_of(AttributeId id) {
    if (name_of(id).ends_with("_ACTIONS")) return Place::action;
    switch (id) {
    case AttributeId::LABEL:
    case AttributeId::HELP: return Place::text;
    case AttributeId::DISPLAY_ITEMS:
    case AttributeId::EDIT_ITEMS: return Place::display_item;
    case AttributeId::cause_parameter:
    case AttributeId::effected_parameter:
    case AttributeId::references: return Place::relation;
    case AttributeId::RESPONSE_CODES: return Place::response_codes;
    case AttributeId::X_AXIS:
    case AttributeId::Y_AXIS: return Place::axis;
    case AttributeId::PATH: return Place::image_path;
    default: return Place::value;
    }
}

// The parts of the structured entries (menu items, members, transactions, ...) by name;
// the lists inside a transaction keep the place they are in.
Place place_of_part(std::string_view part, Place outer) {
    struct PartPlace {
        std::string_view part;
        Place place;
    };
    static constexpr PartPlace parts[] = {
        {"item_reference", Place::menu_item},    {"description", Place::text},
        {"help", Place::text},                   {"action", Place::action},
        {"data_item_reference", Place::data_item}, {"member_reference", Place::member},
        {"element_reference", Place::element},   {"RESPONSE_CODES", Place::response_codes},
        {"REQUEST", Place::data_item},           {"REPLY", Place::data_item},
    };
    for (const PartPlace& entry : parts)
        if (entry.part == part) return entry.place;
    return outer == Place::text ? Place::text : Place::value;
}

class Walker {
public:
    Walker(const Item& item, AttributeId attribute, const std::function<void(const Found&)>& found)
        : item_(item), attribute_(attribute), found_(found) {}

    void walk(const Value& value, Place place) {
        switch (value.kind()) {
        case ValueKind::STRING:
        case ValueKind::DICTIONARY_REFERENCE: {
            // A string among menu items is shown as a text.
            const Naming naming = value.kind() == ValueKind::STRING ? Naming::string : Naming::dictionary_key;
            const std::string_view text = static_cast<const SimpleValue&>(value).text();
            found_({item_, attribute_, place == Place::menu_item ? Place::text : place, naming, text, value});
            return;
        }
        case ValueKind::REFERENCE: {
            // A call keeps its arguments as its argument; an index keeps its '[' in the path.
            const auto& reference = static_cast<const ReferenceValue&>(value);
            const bool call = reference.has_argument() && reference.name().find('[') == std::string_view::npos;
            found_({item_, attribute_, place, call ? Naming::call : Naming::reference, reference.name(), value});
            if (reference.has_argument()) walk(*reference.argument(), Place::value);
            return;
        }
        case ValueKind::VALUE_LIST:
            for (const ValuePtr& entry : static_cast<const ValueList&>(value).items()) walk(*entry, place);
            return;
        case ValueKind::EXPRESSION:
            for (const ValuePtr& part : static_cast<const Expression&>(value).parts()) walk(*part, Place::value);
            return;
        case ValueKind::COMPOSED:
            for (const Attribute& part : static_cast<const ComposedValue&>(value).attributes())
                walk(*part.value, place_of_part(part.name, place));
            return;
        case ValueKind::TYPE: return walk_type(static_cast<const TypeValue&>(value));
        case ValueKind::IF_CONDITIONAL: return walk_if(static_cast<const IfConditional&>(value), place);
        case ValueKind::SELECT_CONDITIONAL: return walk_select(static_cast<const SelectConditional&>(value), place);
        default: return;  // literals, keywords, code, parameters: they name nothing
        }
    }

private:
    // The further values of an INDEX type are the array it indexes; those of an enumerated
    // type its enumerators.
    void walk_type(const TypeValue& type) {
        for (const Attribute& attribute : type.attributes()) walk(*attribute.value, Place::value);
        const Place place = type.name() == "INDEX" ? Place::index_array : Place::value;
        for (const ValuePtr& value : type.values()) walk(*value, place);
    }

    void walk_if(const IfConditional& choice, Place place) {
        walk(choice.condition(), Place::value);
        walk(choice.then_value(), place);
        if (choice.has_else()) walk(choice.else_value(), place);
    }

    void walk_select(const SelectConditional& choice, Place place) {
        walk(choice.selector(), Place::value);
        for (std::size_t i = 0; i < choice.case_count(); ++i) {
            walk(choice.case_at(i).label(), Place::value);
            walk(choice.case_at(i).value(), place);
        }
        if (choice.has_default()) walk(choice.default_value(), place);
    }

    const Item& item_;
    AttributeId attribute_;
    const std::function<void(const Found&)>& found_;
};

void collect_members(const Value& value, std::vector<std::string_view>& names) {
    switch (value.kind()) {
    case ValueKind::COMPOSED: {
        const auto& member = static_cast<const ComposedValue&>(value);
        if (member.contains("member_identifier"))
            names.push_back(static_cast<const SimpleValue&>(*member.value("member_identifier")).text());
        return;
    }
    case ValueKind::VALUE_LIST:
        for (const ValuePtr& entry : static_cast<const ValueList&>(value).items()) collect_members(*entry, names);
        return;
    case ValueKind::IF_CONDITIONAL: {
        const auto& choice = static_cast<const IfConditional&>(value);
        collect_members(choice.then_value(), names);
        if (choice.has_else()) collect_members(choice.else_value(), names);
        return;
    }
    case ValueKind::SELECT_CONDITIONAL: {
        const auto& choice = static_cast<const SelectConditional&>(value);
        for (std::size_t i = 0; i < choice.case_count(); ++i) collect_members(choice.case_at(i).value(), names);
        if (choice.has_default()) collect_members(choice.default_value(), names);
        return;
    }
    default: return;
    }
}

}  // namespace

std::optional<std::vector<std::string_view>> member_names(const Item& item) {
    if (!item.has_attribute(AttributeId::MEMBERS)) return std::nullopt;
    std::vector<std::string_view> names;
    collect_members(*item.attribute(AttributeId::MEMBERS), names);
    std::ranges::sort(names);
    return names;
}

void walk_items(std::span<const Item> items, const std::function<void(const Found&)>& found) {
    for (const Item& item : items)
        for (const Item::Slot& slot : item.attributes())
            if (slot.value.is_set()) Walker(item, slot.id, found).walk(*slot.value, place_of(slot.id));
}

}  // namespace edd
