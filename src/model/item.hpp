// One item definition: type, name, the LIKE parent, its attributes by id and the token that
// introduced it. Copies share the attributes' values.
#pragma once

#include <utility>
#include <ostream>
#include <string>
#include <vector>

#include "frontend/token.hpp"
#include "model/item_type.hpp"
#include "model/value.hpp"

namespace edd {

class Item {
public:
    Item(ItemType type, std::string name, Token origin = Token())
        : type_(type), name_(std::move(name)), origin_(std::move(origin)) {}

    ItemType type() const { return type_; }
    const std::string& name() const { return name_; }
    const std::string& parent() const { return parent_; }
    bool has_parent() const { return !parent_.empty(); }
    void set_parent(std::string parent) { parent_ = std::move(parent); }
    const Token& origin() const { return origin_; }

    // Every attribute operation rejects INVALID and COUNT_ with std::invalid_argument.
    bool has_attribute(AttributeId id) const;
    // An undefined attribute throws std::logic_error.
    const ValuePtr& attribute(AttributeId id) const;
    void set_attribute(AttributeId id, ValuePtr value);
    void remove_attribute(AttributeId id);
    std::vector<AttributeId> defined_attributes() const;
    void collect_dictionary_keys(KeySet& keys) const;

private:
    // Throws std::invalid_argument for an id that names no attribute.
    static void check(AttributeId id);
    using Slot = std::pair<AttributeId, ValuePtr>;
    std::vector<Slot>::const_iterator find(AttributeId id) const;

    ItemType type_;
    std::string name_;
    std::string parent_;
    // Only the attributes set, in id order: an item sets a handful of the many ids.
    std::vector<Slot> slots_;
    Token origin_;
};

// The item-type word of an item: its type's keyword, or "LIKE" for an item defined LIKE
// another without naming a type (until the base supplies one).
std::string_view item_type_word(const Item& item);

// The EDDL-like text form of an item (the -t dump).
void dump_item(std::ostream& out, const Item& item);
// Each item followed by an empty line.
void dump_items(std::ostream& out, const std::vector<Item>& items);

}  // namespace edd
