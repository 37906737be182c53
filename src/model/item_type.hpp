// SPDX-License-Identifier: Apache-2.0
// Item types and attribute ids: positions in their keyword lists. Unknown words map to 255.
#pragma once

#include <cstdint>
#include <cstddef>
#include <string_view>

#include "frontend/word.hpp"

namespace edd {

enum class ItemType : std::uint8_t {
#define EDD_ITEM_TYPE(name) name,
#include "model/item_types.def"
#undef EDD_ITEM_TYPE
    UNKNOWN = 255,
};
inline constexpr std::size_t item_type_count = 25;

enum class AttributeId : std::uint8_t {
#define EDD_ATTRIBUTE(name) name,
#include "model/attributes.def"
#undef EDD_ATTRIBUTE
    COUNT_ = 70,  // not an attribute: the number of them
    INVALID = 255,
};
inline constexpr std::size_t attribute_count = 70;

constexpr std::uint8_t code(ItemType type) { return static_cast<std::uint8_t>(type); }
constexpr std::uint8_t code(AttributeId id) { return static_cast<std::uint8_t>(id); }
constexpr bool is_valid(AttributeId id) { return code(id) < attribute_count; }

// Binary search of the sorted type names; UNKNOWN when absent.
ItemType find_item_type(std::string_view name);
// The attribute of that name, case-sensitive; INVALID when absent.
AttributeId find_attribute(std::string_view name);
// The same for a token's word, one load: UNKNOWN and INVALID for no word or another one.
ItemType find_item_type(Word word);
AttributeId find_attribute(Word word);

// The keyword of a code; empty for codes outside the table.
std::string_view name_of(ItemType type);
std::string_view name_of(AttributeId id);

}  // namespace edd
