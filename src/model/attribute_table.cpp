// SPDX-License-Identifier: Apache-2.0
#include "model/attribute_table.hpp"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

namespace edd {

namespace {

using A = AttributeId;

struct Row {
    ItemType type;
    std::initializer_list<AttributeId> attributes;
};

const Row rows[] = {
    {ItemType::ARRAY, {A::ELEMENTS, A::HELP, A::LABEL, A::NUMBER_OF_ELEMENTS, A::RESPONSE_CODES, A::TYPE, A::of_type}},
    {ItemType::AXIS, {A::CONSTANT_UNIT, A::HELP, A::LABEL, A::MAX_VALUE, A::MIN_VALUE, A::SCALING}},
    {ItemType::BLOCK, {A::NUMBER, A::TYPE}},
    {ItemType::CHART, {A::CYCLE_TIME, A::HEIGHT, A::HELP, A::LABEL, A::LENGTH, A::MEMBERS, A::TYPE, A::VALIDITY, A::WIDTH}},
    {ItemType::COLLECTION, {A::HELP, A::LABEL, A::MEMBERS, A::of_type}},
    {ItemType::COMMAND, {A::BLOCK, A::CONNECTION, A::HEADER, A::INDEX, A::MODULE, A::NUMBER, A::OPERATION,
                         A::RESPONSE_CODES, A::SLOT, A::TRANSACTION}},
    {ItemType::CONNECTION, {A::APPINSTANCE}},
    {ItemType::EDIT_DISPLAY, {A::DISPLAY_ITEMS, A::EDIT_ITEMS, A::HELP, A::LABEL, A::POST_EDIT_ACTIONS,
                              A::PRE_EDIT_ACTIONS, A::VALIDITY}},
    {ItemType::FILE, {A::HELP, A::LABEL, A::MEMBERS}},
    {ItemType::GRAPH, {A::CYCLE_TIME, A::HEIGHT, A::HELP, A::LABEL, A::MEMBERS, A::VALIDITY, A::WIDTH, A::X_AXIS}},
    {ItemType::GRID, {A::HANDLING, A::HEIGHT, A::HELP, A::LABEL, A::ORIENTATION, A::VALIDITY, A::VECTORS, A::WIDTH}},
    {ItemType::IMAGE, {A::HELP, A::LABEL, A::LINK, A::PATH, A::VALIDITY}},
    {ItemType::ITEM_ARRAY, {A::ELEMENTS, A::HELP, A::LABEL, A::of_type}},
    {ItemType::LIST, {A::CAPACITY, A::COUNT, A::HELP, A::LABEL, A::TYPE}},
    {ItemType::MENU, {A::ACCESS, A::ENTRY, A::HELP, A::ITEMS, A::LABEL, A::POST_EDIT_ACTIONS, A::POST_READ_ACTIONS,
                      A::POST_WRITE_ACTIONS, A::PRE_EDIT_ACTIONS, A::PRE_READ_ACTIONS, A::PRE_WRITE_ACTIONS,
                      A::PURPOSE, A::ROLE, A::STYLE, A::VALIDITY}},
    {ItemType::METHOD, {A::ACCESS, A::CLASS, A::DEFINITION, A::HELP, A::LABEL, A::TYPE, A::VALIDITY,
                        A::method_parameters}},
    {ItemType::RECORD, {A::HELP, A::LABEL, A::MEMBERS, A::RESPONSE_CODES}},
    {ItemType::REFRESH, {A::cause_parameter, A::effected_parameter}},
    {ItemType::RESPONSE_CODES, {A::response_code}},
    {ItemType::SOURCE, {A::EMPHASIS, A::EXIT_ACTIONS, A::HELP, A::INIT_ACTIONS, A::LABEL, A::LINE_COLOR, A::LINE_TYPE,
                        A::MEMBERS, A::REFRESH_ACTIONS, A::VALIDITY, A::Y_AXIS}},
    {ItemType::UNIT, {A::cause_parameter, A::effected_parameter}},
    {ItemType::VARIABLE, {A::CLASS, A::CONSTANT_UNIT, A::DEFAULT_VALUE, A::HANDLING, A::HELP, A::INITIAL_VALUE,
                          A::LABEL, A::POST_EDIT_ACTIONS, A::POST_READ_ACTIONS, A::POST_WRITE_ACTIONS,
                          A::PRE_EDIT_ACTIONS, A::PRE_READ_ACTIONS, A::PRE_WRITE_ACTIONS, A::PURPOSE, A::READ_TIMEOUT,
                          A::REFRESH_ACTIONS, A::RESPONSE_CODES, A::STYLE, A::TYPE, A::VALIDITY, A::WRITE_TIMEOUT}},
    {ItemType::VARIABLE_LIST, {A::HELP, A::LABEL, A::MEMBERS, A::RESPONSE_CODES}},
    {ItemType::WAVEFORM, {A::EMPHASIS, A::EXIT_ACTIONS, A::HANDLING, A::HELP, A::INIT_ACTIONS, A::KEY_POINTS, A::LABEL,
                          A::LINE_COLOR, A::LINE_TYPE, A::REFRESH_ACTIONS, A::TYPE, A::VALIDITY, A::Y_AXIS}},
    {ItemType::WRITE_AS_ONE, {A::references}},
};

// One bit per attribute for each item type, built once from the rows.
using AttributeSet = std::array<bool, attribute_count>;
const std::array<AttributeSet, item_type_count>& table() {
    static const auto built = [] {
        std::array<AttributeSet, item_type_count> t{};
        for (const Row& row : rows)
            for (AttributeId id : row.attributes) t[code(row.type)][code(id)] = true;
        return t;
    }();
    return built;
}

}  // namespace

bool item_defines_attribute(ItemType type, AttributeId id) {
    if (code(type) >= item_type_count) return true;
    if (!is_valid(id)) return false;
    return table()[code(type)][code(id)];
}

}  // namespace edd
