// SPDX-License-Identifier: Apache-2.0
// The checks on what references name: that it exists, has the member asked for and is of a
// type that can stand there; and the menu tree's top.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "checker/check_context.hpp"
#include "checker/checker_messages.hpp"
#include "checker/model_walk.hpp"

namespace edd {

namespace {

using TypeSet = std::uint32_t;  // one bit per item type code
constexpr TypeSet bit(ItemType type) { return TypeSet{1} << code(type); }
static_assert(item_type_count <= 32);

// The item types a plain name may be of where it stands; 0: any. A menu shows what a
// person can look at or start (data, displays, menus, methods), never a command or a
// relation; an action runs a method; the data of commands, relations
// and edit displays are variables; a graph draws waveforms, a chart sources, a source
// variables.
TypeSet allowed_types(Place place, ItemType holder) {
    using enum ItemType;
    switch (place) {
    case Place::menu_item:
        return bit(VARIABLE) | bit(MENU) | bit(METHOD) | bit(EDIT_DISPLAY) | bit(IMAGE) | bit(CHART) | bit(GRAPH) |
               bit(GRID) | bit(LIST) | bit(ARRAY) | bit(ITEM_ARRAY) | bit(COLLECTION) | bit(RECORD) |
               bit(VARIABLE_LIST) | bit(FILE);
    case Place::action: return bit(METHOD);
    case Place::display_item:
    case Place::relation:
    case Place::data_item: return bit(VARIABLE);
    case Place::index_array: return bit(ARRAY) | bit(ITEM_ARRAY) | bit(LIST);
    case Place::response_codes: return bit(RESPONSE_CODES);
    case Place::axis: return bit(AXIS);
    case Place::member:
        return holder == GRAPH ? bit(WAVEFORM) : holder == CHART ? bit(SOURCE) : holder == SOURCE ? bit(VARIABLE) : 0;
    default: return 0;
    }
}

std::string type_names(TypeSet types) {
    std::string names;
    for (std::size_t i = 0; i < item_type_count; ++i) {
        if ((types & (TypeSet{1} << i)) == 0) continue;
        if (!names.empty()) names += checker_messages::type_separator;
        names += name_of(static_cast<ItemType>(i));
    }
    return names;
}

bool is_name_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// The leading name of a reference path: "sensors" of "sensors[i].VALUE".
std::string_view leading_name(std::string_view path) {
    std::size_t end = 0;
    while (end < path.size() && is_name_character(path[end])) ++end;
    return path.substr(0, end);
}

// Items that stand alone: the host finds them by number or applies them itself, so no
// reference to them is expected.
bool stands_alone(ItemType type) {
    using enum ItemType;
    return type == COMMAND || type == REFRESH || type == UNIT || type == WRITE_AS_ONE || type == BLOCK ||
           type == CONNECTION;
}

class ReferenceChecks {
public:
    ReferenceChecks(const CheckContext& context, Findings& findings) : context_(context), findings_(findings) {}

    void run() {
        walk_items(context_.parsed.items(), [this](const Found& found) {
            if (found.naming == Naming::reference) reference(found);
        });
        for (const Item& item : context_.parsed.items()) {
            if (!item.has_parent()) continue;
            referenced_.insert(item.parent());
            if (!context_.resolved.contains(item.parent()))
                findings_.add(CheckId::undefined_reference, item.origin(),
                              {item.parent(), checker_messages::like_place, item.name()});
        }
        top_menus();
    }

private:
    void reference(const Found& found) {
        const std::string_view path = found.text;
        const std::string_view name = leading_name(path);
        if (name.empty()) return;
        referenced_.insert(name);
        const Position where = context_.positions.of(found.value, found.item.origin());
        const std::string_view attribute = name_of(found.attribute);
        const Item* target = context_.resolved.find(name);
        if (target == nullptr) {
            findings_.add(CheckId::undefined_reference, where, {path, attribute, found.item.name()});
            return;
        }
        const Item& holder = context_.resolved_of(found.item);
        if (found.place == Place::menu_item && holder.type() == ItemType::MENU && name != holder.name())
            named_by_menus_.insert(name);
        if (name.size() == path.size()) return type(found, *target, holder, where);
        if (path[name.size()] == '.') member(*target, path.substr(name.size() + 1), where, found);
    }

    void type(const Found& found, const Item& target, const Item& holder, Position where) {
        const TypeSet allowed = allowed_types(found.place, holder.type());
        if (allowed == 0 || target.type() == ItemType::UNKNOWN || (allowed & bit(target.type())) != 0) return;
        findings_.add(CheckId::wrong_item_type, where,
                      {target.name(), name_of(target.type()), name_of(found.attribute), found.item.name(),
                       type_names(allowed)});
    }

    void member(const Item& target, std::string_view rest, Position where, const Found& found) {
        const std::string_view member = leading_name(rest);
        auto [entry, added] = members_.try_emplace(&target);
        if (added) entry->second = member_names(target);
        if (!entry->second || member.empty() || std::ranges::binary_search(*entry->second, member)) return;
        findings_.add(CheckId::undefined_member, where,
                      {target.name(), member, name_of(found.attribute), found.item.name()});
    }

    // The menus no other menu names, root_menu first; then the items that neither a
    // reference nor the top of the menu tree names.
    void top_menus() {
        std::vector<const Item*> tops;
        for (const Item& item : context_.resolved.items())
            if (item.type() == ItemType::MENU && !named_by_menus_.contains(item.name())) tops.push_back(&item);
        std::stable_partition(tops.begin(), tops.end(), [](const Item* menu) { return menu->name() == "root_menu"; });
        if (tops.empty())
            findings_.add(CheckId::no_top_menu, {intern_file_name(context_.input_file), 1}, {});
        for (std::size_t i = 1; i < tops.size(); ++i)
            findings_.add(CheckId::second_top_menu, tops[i]->origin(), {tops[i]->name(), tops[0]->name()});
        if (!findings_.wanted(CheckId::unreferenced_item)) return;
        for (const Item* top : tops) referenced_.insert(top->name());
        for (const Item& item : context_.resolved.items()) {
            if (stands_alone(item.type()) || referenced_.contains(item.name())) continue;
            findings_.add(CheckId::unreferenced_item, item.origin(), {item_type_word(item), item.name()});
        }
    }

    const CheckContext& context_;
    Findings& findings_;
    std::unordered_set<std::string_view> referenced_;
    std::unordered_set<std::string_view> named_by_menus_;
    std::unordered_map<const Item*, std::optional<std::vector<std::string_view>>> members_;
};

}  // namespace

void check_references(const CheckContext& context, Findings& findings) { ReferenceChecks(context, findings).run(); }

}  // namespace edd
