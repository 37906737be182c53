// SPDX-License-Identifier: Apache-2.0
// One item definition: type, name, the LIKE parent, its attributes by id and the place of
// its definition. Copies share the attributes' values.
#pragma once

#include <memory_resource>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/source_files.hpp"
#include "model/item_type.hpp"
#include "model/value.hpp"

namespace edd {

// A place in the sources: file and line, as messages print it.
struct Position {
    FileIndex file = 0;
    int line = 0;
    const std::string& file_name() const { return file_name_of(file); }
};

class Item {
public:
    struct Slot {
        AttributeId id;
        ValuePtr value;
    };

    // The attributes go to `slots`, by default the arena. A reader that does not know how
    // many an item sets gathers them elsewhere and keeps the copy below, so that growing
    // the list leaves nothing behind in the arena.
    Item(Arena& arena, ItemType type, std::string_view name, Position origin,
         std::pmr::memory_resource* slots = nullptr)
        : type_(type), name_(arena.copy(name)), origin_(origin), slots_(slots != nullptr ? slots : arena.resource()) {}
    // A copy whose attributes are in `arena`, with room for exactly them; its name and parent
    // must be texts of `arena` already.
    Item(const Item& other, Arena& arena)
        : type_(other.type_),
          name_(other.name_),
          parent_(other.parent_),
          origin_(other.origin_),
          slots_(other.slots_, arena.resource()) {}
    // A copy keeps to the arena of the original (a pmr container would otherwise move to
    // the default resource).
    Item(const Item& other)
        : type_(other.type_),
          name_(other.name_),
          parent_(other.parent_),
          origin_(other.origin_),
          slots_(other.slots_, other.slots_.get_allocator()) {}
    Item(Item&&) = default;
    Item& operator=(const Item&) = default;
    Item& operator=(Item&&) = default;

    ItemType type() const { return type_; }
    void set_type(ItemType type) { type_ = type; }
    std::string_view name() const { return name_; }
    std::string_view parent() const { return parent_; }
    bool has_parent() const { return !parent_.empty(); }
    // The name is copied to where the attributes are.
    void set_parent(std::string_view parent) { parent_ = copy_text(*slots_.get_allocator().resource(), parent); }
    Position origin() const { return origin_; }

    // Every attribute operation rejects INVALID and COUNT_ with std::invalid_argument.
    bool has_attribute(AttributeId id) const;
    // An undefined attribute throws std::logic_error.
    const ValuePtr& attribute(AttributeId id) const;
    void set_attribute(AttributeId id, ValuePtr value);
    void reserve_attributes(std::size_t count) { slots_.reserve(count); }
    void remove_attribute(AttributeId id);
    // The attributes set, in ascending id order.
    std::span<const Slot> attributes() const { return slots_; }
    void collect_dictionary_keys(KeySet& keys) const;

private:
    // Throws std::invalid_argument for an id that names no attribute.
    static void check(AttributeId id);
    std::pmr::vector<Slot>::const_iterator find(AttributeId id) const;

    ItemType type_;
    std::string_view name_;
    std::string_view parent_;
    Position origin_;
    // Only the attributes set, in id order: an item sets a handful of the many ids.
    std::pmr::vector<Slot> slots_;
};

// The item-type word of an item: its type's keyword, or "LIKE" for an item defined LIKE
// another without naming a type (until the base supplies one).
std::string_view item_type_word(const Item& item);

// The EDDL-like text form of an item (the -t dump).
void dump_item(std::ostream& out, const Item& item);
// Each item followed by an empty line.
void dump_items(std::ostream& out, std::span<const Item> items);

}  // namespace edd
