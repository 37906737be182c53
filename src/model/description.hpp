// A parsed description: its identification and its items, findable by name and kept in
// definition order.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/identification.hpp"
#include "model/item.hpp"

namespace edd {

class ItemTable {
public:
    bool contains(std::string_view name) const { return index_.contains(name); }
    // An absent name throws std::invalid_argument ("Object not in dd.").
    const Item& get(std::string_view name) const;
    Item& get(std::string_view name);
    // Appends; the name must not be taken.
    void insert(Item item);
    void remove(std::string_view name);
    std::vector<const Item*> of_type(ItemType type) const;
    // Hands the items over in order and leaves the table empty.
    std::vector<Item> release();
    const std::vector<Item>& items() const { return items_; }
    std::size_t size() const { return items_.size(); }
    bool empty() const { return items_.empty(); }

private:
    std::vector<Item> items_;
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>{}(name); }
    };
    std::unordered_map<std::string, std::size_t, NameHash, std::equal_to<>> index_;
};

struct Description {
    Identification identification;
    ItemTable items;
};

}  // namespace edd
