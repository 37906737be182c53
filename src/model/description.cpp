// SPDX-License-Identifier: Apache-2.0
#include "model/description.hpp"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

#include "diagnostics/messages.hpp"

namespace edd {

void ItemTable::reserve(std::size_t items) {
    // Geometric, as inserts would grow it: many small imports must not reallocate each time.
    if (items > items_.capacity()) items_.reserve(std::max(items, 2 * items_.capacity()));
    std::size_t slots = index_.empty() ? 64 : index_.size();
    while (!room_for(items, slots)) slots *= 2;
    if (slots != index_.size()) grow_index(slots);
}

std::uint32_t ItemTable::hash_of(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(name));
}

const Item* ItemTable::find(std::string_view name) const {
    if (index_.empty()) return nullptr;
    const std::uint32_t hash = hash_of(name);
    const std::size_t mask = index_.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
        const Slot& slot = index_[i];
        if (slot.position == 0) return nullptr;
        if (slot.hash == hash && items_[slot.position - 1].name() == name) return &items_[slot.position - 1];
    }
}

// The stored hashes place the entries again without reading a name.
void ItemTable::grow_index(std::size_t slots) {
    std::vector<Slot> old = std::exchange(index_, std::vector<Slot>(slots));
    const std::size_t mask = index_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.position == 0) continue;
        std::size_t i = slot.hash & mask;
        while (index_[i].position != 0) i = (i + 1) & mask;
        index_[i] = slot;
    }
}

const Item& ItemTable::get(std::string_view name) const {
    const Item* item = find(name);
    if (item == nullptr) throw std::invalid_argument(std::string(messages::not_in_item_table));
    return *item;
}

Item& ItemTable::get(std::string_view name) { return const_cast<Item&>(static_cast<const ItemTable&>(*this).get(name)); }

void ItemTable::insert(Item item) {
    if (!room_for(items_.size() + 1, index_.size())) grow_index(index_.empty() ? 64 : 2 * index_.size());
    const std::uint32_t hash = hash_of(item.name());
    const std::size_t mask = index_.size() - 1;
    std::size_t i = hash & mask;
    while (index_[i].position != 0) i = (i + 1) & mask;
    items_.push_back(std::move(item));
    index_[i] = {hash, static_cast<std::uint32_t>(items_.size())};
}

std::vector<const Item*> ItemTable::of_type(ItemType type) const {
    std::vector<const Item*> result;
    for (const Item& item : items_)
        if (item.type() == type) result.push_back(&item);
    return result;
}

}  // namespace edd
