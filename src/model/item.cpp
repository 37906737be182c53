#include "model/item.hpp"

#include <stdexcept>

namespace edd {

std::size_t Item::slot(AttributeId id) const {
    if (!is_valid(id)) throw std::invalid_argument("Invalid object attribute id.");
    return code(id);
}

bool Item::has_attribute(AttributeId id) const { return slots_[slot(id)].is_set(); }

const ValuePtr& Item::attribute(AttributeId id) const {
    const ValuePtr& value = slots_[slot(id)];
    if (!value.is_set()) throw std::logic_error("Trying to access attribtue that is not defined.");
    if (value.get() == nullptr) throw NullPointer();
    return value;
}

void Item::set_attribute(AttributeId id, const ValuePtr& value) {
    const std::size_t index = slot(id);  // the id is checked before the value is touched
    slots_[index] = clone_of(value);
}

void Item::remove_attribute(AttributeId id) { slots_[slot(id)] = ValuePtr(); }

std::vector<AttributeId> Item::defined_attributes() const {
    std::vector<AttributeId> ids;
    for (std::size_t i = 0; i < attribute_count; ++i)
        if (slots_[i].is_set()) ids.push_back(static_cast<AttributeId>(i));
    return ids;
}

void Item::collect_dictionary_keys(KeySet& keys) const {
    for (const ValuePtr& value : slots_)
        if (value.is_set()) value->collect_dictionary_keys(keys);
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
