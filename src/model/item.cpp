// SPDX-License-Identifier: Apache-2.0
#include "model/item.hpp"

#include <algorithm>
#include <stdexcept>

#include "diagnostics/messages.hpp"

namespace edd {

namespace {
[[noreturn]] void refuse_attribute_id() { throw std::invalid_argument(std::string(messages::invalid_attribute)); }
}  // namespace

void Item::check(AttributeId id) {
    if (!is_valid(id)) refuse_attribute_id();
}

std::pmr::vector<Item::Slot>::const_iterator Item::find(AttributeId id) const {
    check(id);
    auto it = std::ranges::lower_bound(slots_, code(id), {}, [](const Slot& s) { return code(s.id); });
    return it != slots_.end() && it->id == id ? it : slots_.end();
}

bool Item::has_attribute(AttributeId id) const { return find(id) != slots_.end(); }

const ValuePtr& Item::attribute(AttributeId id) const {
    auto it = find(id);
    if (it == slots_.end()) throw std::logic_error(std::string(messages::undefined_attribute));
    if (!it->value.is_set()) throw NullPointer();
    return it->value;
}

void Item::set_attribute(AttributeId id, ValuePtr value) {
    check(id);  // the id is checked before the value is touched
    auto it = std::ranges::lower_bound(slots_, code(id), {}, [](const Slot& s) { return code(s.id); });
    if (it != slots_.end() && it->id == id) it->value = value;
    else slots_.insert(it, {id, value});
}

void Item::remove_attribute(AttributeId id) {
    auto it = find(id);
    if (it != slots_.end()) slots_.erase(it);
}

void Item::collect_dictionary_keys(KeySet& keys) const {
    for (const Slot& slot : slots_) collect_keys(slot.value, keys);
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
    for (const Item::Slot& slot : item.attributes()) {
        const Value& value = *slot.value;
        const ValueKind kind = value.kind();
        const bool block = kind == ValueKind::VALUE_LIST || kind == ValueKind::CODE;
        out << "    " << name_of(slot.id) << (block ? " {\n" : " ") << value.to_string() << terminator(kind);
    }
    out << "}\n";
}

void dump_items(std::ostream& out, std::span<const Item> items) {
    for (const Item& item : items) {
        dump_item(out, item);
        out << "\n\n";
    }
}

}  // namespace edd
