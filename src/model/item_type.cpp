#include "model/item_type.hpp"

#include <algorithm>
#include <iterator>

namespace edd {

namespace {

constexpr std::string_view item_type_names[] = {
#define EDD_ITEM_TYPE(name) #name,
#include "model/item_types.def"
#undef EDD_ITEM_TYPE
};
static_assert(std::size(item_type_names) == item_type_count);
static_assert(std::ranges::is_sorted(item_type_names));

constexpr std::string_view attribute_names[] = {
#define EDD_ATTRIBUTE(name) #name,
#include "model/attributes.def"
#undef EDD_ATTRIBUTE
};
static_assert(std::size(attribute_names) == attribute_count);

}  // namespace

ItemType find_item_type(std::string_view name) {
    auto it = std::ranges::lower_bound(item_type_names, name);
    if (it == std::end(item_type_names) || *it != name) return ItemType::UNKNOWN;
    return static_cast<ItemType>(it - std::begin(item_type_names));
}

AttributeId find_attribute(std::string_view name) {
    auto it = std::ranges::find(attribute_names, name);
    if (it == std::end(attribute_names)) return AttributeId::INVALID;
    return static_cast<AttributeId>(it - std::begin(attribute_names));
}

std::string_view name_of(ItemType type) {
    return code(type) < item_type_count ? item_type_names[code(type)] : std::string_view();
}

std::string_view name_of(AttributeId id) {
    return code(id) < attribute_count ? attribute_names[code(id)] : std::string_view();
}

std::ostream& operator<<(std::ostream& out, ItemType type) { return out << name_of(type); }
std::ostream& operator<<(std::ostream& out, AttributeId id) { return out << name_of(id); }

}  // namespace edd
