#include "model/item.hpp"

#include <algorithm>
#include <stdexcept>

namespace edd {

void Item::check(AttributeId id) {
    if (!is_valid(id)) throw std::invalid_argument("Invalid object attribute id.");
}

std::vector<Item::Slot>::const_iterator Item::find(AttributeId id) const {
    check(id);
    auto it = std::ranges::lower_bound(slots_, code(id), {}, [](const Slot& s) { return code(s.first); });
    return it != slots_.end() && it->first == id ? it : slots_.end();
}

bool Item::has_attribute(AttributeId id) const { return find(id) != slots_.end(); }

const ValuePtr& Item::attribute(AttributeId id) const {
    auto it = find(id);
    if (it == slots_.end()) throw std::logic_error("Trying to access attribtue that is not defined.");
    if (it->second.get() == nullptr) throw NullPointer();
    return it->second;
}

void Item::set_attribute(AttributeId id, ValuePtr value) {
    check(id);  // the id is checked before the value is touched
    ValuePtr stored = take_or_clone(std::move(value));
    auto it = std::ranges::lower_bound(slots_, code(id), {}, [](const Slot& s) { return code(s.first); });
    if (it != slots_.end() && it->first == id) it->second = std::move(stored);
    else slots_.emplace(it, id, std::move(stored));
}

void Item::remove_attribute(AttributeId id) {
    auto it = find(id);
    if (it != slots_.end()) slots_.erase(it);
}

std::vector<AttributeId> Item::defined_attributes() const {
    std::vector<AttributeId> ids;
    ids.reserve(slots_.size());
    for (const Slot& slot : slots_) ids.push_back(slot.first);
    return ids;
}

void Item::collect_dictionary_keys(KeySet& keys) const {
    for (const Slot& slot : slots_) slot.second->collect_dictionary_keys(keys);
}

namespace {

// Plain values end with ";", lists and code close a block, everything else ends the line.
std::string_view terminator(ValueKind kind) {
    switch (kind) {
    case ValueKind::STRING:
    case ValueKind::INTEGER:
    case ValueKind::FLOAT:
    case ValueKind::KEYWORD:
    case ValueKind::IDENTIFIER:
    case ValueKind::REFERENCE: return ";\n";
    case ValueKind::VALUE_LIST:
    case ValueKind::CODE: return "\n    }\n";
    default: return "\n";
    }
}

}  // namespace

std::string_view item_type_word(const Item& item) {
    return item.type() == ItemType::UNKNOWN ? std::string_view("LIKE") : name_of(item.type());
}

void dump_item(std::ostream& out, const Item& item) {
    out << item_type_word(item) << ' ' << item.name() << "\n{\n";
    for (AttributeId id : item.defined_attributes()) {
        const Value& value = *item.attribute(id);
        const ValueKind kind = value.kind();
        const bool block = kind == ValueKind::VALUE_LIST || kind == ValueKind::CODE;
        out << "    " << id << (block ? " {\n" : " ") << value.to_string() << terminator(kind);
    }
    out << "}\n";
}

void dump_items(std::ostream& out, const std::vector<Item>& items) {
    for (const Item& item : items) {
        dump_item(out, item);
        out << "\n\n";
    }
}

}  // namespace edd
