#include "model/description.hpp"

#include <stdexcept>
#include <utility>

namespace edd {

namespace {
constexpr const char* not_in_table = "Object not in dd.";
}

const Item& ItemTable::get(std::string_view name) const {
    auto it = index_.find(name);
    if (it == index_.end()) throw std::invalid_argument(not_in_table);
    return items_[it->second];
}

Item& ItemTable::get(std::string_view name) {
    return const_cast<Item&>(static_cast<const ItemTable&>(*this).get(name));
}

void ItemTable::insert(Item item) {
    index_.emplace(item.name(), items_.size());
    items_.push_back(std::move(item));
}

void ItemTable::remove(std::string_view name) {
    auto it = index_.find(name);
    if (it == index_.end()) throw std::invalid_argument(not_in_table);
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(it->second));
    index_.clear();
    for (std::size_t i = 0; i < items_.size(); ++i) index_.emplace(items_[i].name(), i);
}

std::vector<Item> ItemTable::release() {
    index_.clear();
    return std::exchange(items_, {});
}

std::vector<const Item*> ItemTable::of_type(ItemType type) const {
    std::vector<const Item*> result;
    for (const Item& item : items_)
        if (item.type() == type) result.push_back(&item);
    return result;
}

}  // namespace edd
