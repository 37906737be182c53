// SPDX-License-Identifier: Apache-2.0
#include "model/item_type.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "frontend/keywords.hpp"

namespace edd {

namespace {

constexpr std::string_view item_type_names[] = {
#define EDD_ITEM_TYPE(name) #name,
#include "model/item_types.def"
#undef EDD_ITEM_TYPE
};
static_assert(std::size(item_type_names) == item_type_count);
static_assert(std::ranges::is_sorted(item_type_names));

constexpr std::string_view attribute_names[] = {
#define EDD_ATTRIBUTE(name) #name,
#include "model/attributes.def"
#undef EDD_ATTRIBUTE
};
static_assert(std::size(attribute_names) == attribute_count);

// Every attribute statement looks its name up: open addressing over a table at most a
// quarter full, built when the program is compiled.
constexpr std::size_t attribute_table_size = 512;
static_assert(4 * attribute_count <= attribute_table_size);

constexpr std::size_t attribute_slot(std::string_view name) {
    std::uint32_t hash = 2166136261u;  // FNV-1a
    for (char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return hash & (attribute_table_size - 1);
}

// Positions in attribute_names, plus one; zero is a free slot.
constexpr auto attribute_table = [] {
    std::array<std::uint16_t, attribute_table_size> table{};
    for (std::size_t code = 0; code < attribute_count; ++code) {
        std::size_t i = attribute_slot(attribute_names[code]);
        while (table[i] != 0) i = (i + 1) & (attribute_table_size - 1);
        table[i] = static_cast<std::uint16_t>(code + 1);
    }
    return table;
}();

// The position of the name in attribute_names, or attribute_count when it is none.
constexpr std::size_t attribute_code(std::string_view name) {
    for (std::size_t i = attribute_slot(name);; i = (i + 1) & (attribute_table_size - 1)) {
        const std::size_t entry = attribute_table[i];
        if (entry == 0) return attribute_count;
        if (attribute_names[entry - 1] == name) return entry - 1;
    }
}

static_assert([] {
    for (std::size_t code = 0; code < attribute_count; ++code)
        if (attribute_code(attribute_names[code]) != code) return false;
    return attribute_code("") == attribute_count && attribute_code("LABELS") == attribute_count;
}());

// Every item type and attribute is a word of the keyword table: the parser looks them up by
// the number its token carries.
constexpr std::size_t table_words = word_number_limit - first_table_word;
// Every name must be a word of the table, or this does not compile.
template <class Code, std::size_t N>
constexpr auto by_word(const std::string_view (&names)[N], Code none) {
    std::array<Code, table_words> codes{};
    codes.fill(none);
    for (std::size_t code = 0; code < N; ++code) {
        const std::uint16_t number = word_number(names[code]);
        if (number < first_table_word) throw "not a word of the keyword table";
        codes[number - first_table_word] = static_cast<Code>(code);
    }
    return codes;
}
constexpr auto item_types_by_word = by_word(item_type_names, ItemType::UNKNOWN);
constexpr auto attributes_by_word = by_word(attribute_names, AttributeId::INVALID);

}  // namespace

ItemType find_item_type(Word word) {
    return word.number() >= first_table_word ? item_types_by_word[word.number() - first_table_word] : ItemType::UNKNOWN;
}

AttributeId find_attribute(Word word) {
    return word.number() >= first_table_word ? attributes_by_word[word.number() - first_table_word]
                                             : AttributeId::INVALID;
}

ItemType find_item_type(std::string_view name) {
    auto it = std::ranges::lower_bound(item_type_names, name);
    if (it == std::end(item_type_names) || *it != name) return ItemType::UNKNOWN;
    return static_cast<ItemType>(it - std::begin(item_type_names));
}

AttributeId find_attribute(std::string_view name) {
    const std::size_t code = attribute_code(name);
    return code == attribute_count ? AttributeId::INVALID : static_cast<AttributeId>(code);
}

std::string_view name_of(ItemType type) {
    return code(type) < item_type_count ? item_type_names[code(type)] : std::string_view();
}

std::string_view name_of(AttributeId id) {
    return code(id) < attribute_count ? attribute_names[code(id)] : std::string_view();
}

}  // namespace edd
