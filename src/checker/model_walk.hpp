// SPDX-License-Identifier: Apache-2.0
// The one walk over the model that the checks share: every reference, dictionary key and
// string of every item, with the kind of place it stands in. The checks never look at the
// model's values themselves, so a new shape of the model changes this file alone.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "model/item.hpp"
#include "model/value.hpp"

namespace edd {

// What may stand where a value stands, as far as the checks care.
enum class Place : std::uint8_t {
    value,           // an expression, a limit, a condition: any name
    text,            // a label, a help, a description: a string or a dictionary key
    menu_item,       // an entry of a menu's ITEMS
    action,          // an entry of an *_ACTIONS list or an enumerator's action
    display_item,    // DISPLAY_ITEMS and EDIT_ITEMS of an edit display
    relation,        // the variables of a REFRESH, a UNIT or a WRITE_AS_ONE
    index_array,     // the array an INDEX type indexes
    data_item,       // a request or reply item of a command's transaction
    response_codes,  // a RESPONSE_CODES attribute that names a RESPONSE_CODES item
    member,          // the reference of a MEMBERS entry
    element,         // the reference of an ELEMENTS entry
    axis,            // X_AXIS and Y_AXIS
    image_path,      // a string of an image's PATH
};

// What a found value is; the checks learn no more of the model's values than this.
enum class Naming : std::uint8_t {
    reference,       // a name or a path: "pv", "sensors[i].VALUE"
    call,            // a name called with arguments, a function of the host: "f" of f(x)
    dictionary_key,  // [key]
    string,          // a string literal
};

struct Found {
    const Item& item;        // the item whose attribute holds the value
    AttributeId attribute;
    Place place;
    Naming naming;
    std::string_view text;   // the path as written, the key, or the string
    const Value& value;      // the value the parser reported the position of
};

// Calls `found` for each reference, dictionary key and string of the items, in item order
// and, within an item, in attribute and source order; indices, arguments and conditions
// included.
void walk_items(std::span<const Item> items, const std::function<void(const Found&)>& found);

// The names of an item's MEMBERS, every branch of their conditionals included, sorted;
// nothing when the item has no MEMBERS.
std::optional<std::vector<std::string_view>> member_names(const Item& item);

}  // namespace edd
