#include "model/description.hpp"

#include <stdexcept>
#include <utility>

namespace edd {

namespace {
constexpr const char* not_in_table = "Object not in dd.";
}

void ItemTable::reserve(std::size_t items) {
    items_.reserve(items);
    index_.reserve(items);
}

const Item* ItemTable::find(std::string_view name) const {
    auto it = index_.find(name);
    return it == index_.end() ? nullptr : &items_[it->second];
}

const Item& ItemTable::get(std::string_view name) const {
    const Item* item = find(name);
    if (item == nullptr) throw std::invalid_argument(not_in_table);
    return *item;
}

Item& ItemTable::get(std::string_view name) { return const_cast<Item&>(static_cast<const ItemTable&>(*this).get(name)); }

void ItemTable::insert(Item item) {
    index_.emplace(item.name(), items_.size());
    items_.push_back(std::move(item));
}

std::vector<const Item*> ItemTable::of_type(ItemType type) const {
    std::vector<const Item*> result;
    for (const Item& item : items_)
        if (item.type() == type) result.push_back(&item);
    return result;
}

}  // namespace edd
