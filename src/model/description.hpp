// SPDX-License-Identifier: Apache-2.0
// A parsed description: its identification and its items, findable by name and kept in
// definition order, and the arena that holds their values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "model/arena.hpp"
#include "files/growing_array.hpp"
#include "model/identification.hpp"
#include "model/item.hpp"

namespace edd {

class ItemTable {
public:
    // Room for `items` in all, so that that many inserts neither move items nor re-index.
    void reserve(std::size_t items);
    bool contains(std::string_view name) const { return find(name) != nullptr; }
    // An absent name throws std::invalid_argument ("Object not in dd.").
    const Item& get(std::string_view name) const;
    Item& get(std::string_view name);
    // Null when the name is not taken.
    const Item* find(std::string_view name) const;
    // Appends; the name must not be taken.
    void insert(Item item);
    std::vector<const Item*> of_type(ItemType type) const;
    std::span<const Item> items() const { return items_.elements(); }
    std::span<Item> items() { return items_.elements(); }
    std::size_t size() const { return items_.size(); }

private:
    // Open addressing over a table at most three quarters full: a slot holds a name's hash
    // and its item's position plus one (zero: free), so a lookup touches one item at most,
    // mostly, and the slots it steps over lie side by side.
    struct Slot {
        std::uint32_t hash;
        std::uint32_t position;
    };
    static bool room_for(std::size_t items, std::size_t slots) { return 4 * items <= 3 * slots; }
    void grow_index(std::size_t slots);  // a power of two
    void place_again(Slot entry, std::size_t mask);

    // Both grow in place once large: the items neither move nor leave copies behind.
    GrowingArray<Item> items_{true};
    GrowingArray<Slot> index_;
};

struct Description {
    // Shared with the descriptions a parse imports, whose items it takes over.
    std::shared_ptr<Arena> arena = std::make_shared<Arena>();
    Identification identification;
    ItemTable items;
};

}  // namespace edd
