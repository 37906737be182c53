// SPDX-License-Identifier: Apache-2.0
#include "model/description.hpp"

#include <stdexcept>
#include <utility>

#include "diagnostics/messages.hpp"
#include "text/name_hash.hpp"

namespace edd {

namespace {
// Marks the index entries placed while the index grows: positions stay below it.
constexpr std::uint32_t placed = std::uint32_t{1} << 31;
}  // namespace

void ItemTable::reserve(std::size_t items) {
    items_.reserve(items);  // geometric on the heap: many small imports do not move it each time
    std::size_t slots = index_.empty() ? 64 : index_.size();
    while (!room_for(items, slots)) slots *= 2;
    if (slots != index_.size()) grow_index(slots);
}

const Item* ItemTable::find(std::string_view name) const {
    if (index_.empty()) return nullptr;
    const std::uint32_t hash = name_hash(name);
    const std::size_t mask = index_.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
        const Slot& slot = index_[i];
        if (slot.position == 0) return nullptr;
        if (slot.hash == hash && items_[slot.position - 1].name() == name) return &items_[slot.position - 1];
    }
}

// In place, by the stored hashes, without reading a name: each entry not yet placed is taken
// out of its slot and placed again by the new mask.
void ItemTable::grow_index(std::size_t slots) {
    const std::size_t old_slots = index_.size();
    index_.grow_to(slots);
    for (std::size_t i = 0; i < old_slots; ++i) {
        if (index_[i].position == 0 || (index_[i].position & placed) != 0) continue;
        place_again(std::exchange(index_[i], Slot{}), slots - 1);
    }
    for (Slot& slot : index_.elements()) slot.position &= ~placed;
}

// An entry not yet placed in the way is swapped out and placed next, from its own start.
// Placed entries never move again, so every slot between an entry's start and the entry
// stays taken and a lookup still finds it.
void ItemTable::place_again(Slot entry, std::size_t mask) {
    std::size_t i = entry.hash & mask;
    while (entry.position != 0) {
        if ((index_[i].position & placed) != 0) {
            i = (i + 1) & mask;
            continue;
        }
        std::swap(entry, index_[i]);
        index_[i].position |= placed;
        i = entry.hash & mask;
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
    const std::uint32_t hash = name_hash(item.name());
    const std::size_t mask = index_.size() - 1;
    std::size_t i = hash & mask;
    while (index_[i].position != 0) i = (i + 1) & mask;
    items_.emplace_back(std::move(item));
    index_[i] = {hash, static_cast<std::uint32_t>(items_.size())};
}

std::vector<const Item*> ItemTable::of_type(ItemType type) const {
    std::vector<const Item*> result;
    for (const Item& item : items_.elements())
        if (item.type() == type) result.push_back(&item);
    return result;
}

}  // namespace edd
