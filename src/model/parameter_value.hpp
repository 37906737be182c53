// SPDX-License-Identifier: Apache-2.0
// One formal parameter of a method: type code, passing mode and name; and the table of the
// type codes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/value.hpp"

namespace edd {

enum class ParameterMode : std::uint32_t { CALL_BY_VALUE = 0, CALL_BY_REFERENCE = 1 };

// A parameter type: the word of a method header that names it alone (none for the two that
// only "unsigned" before another word gives), the code that "unsigned" before that word
// gives, and its names in the dump and in the document.
struct ParameterType {
    std::string_view word;
    std::optional<std::uint32_t> unsigned_code;
    std::string_view name;
    std::string_view element;
};
// Indexed by type code.
inline constexpr ParameterType parameter_types[] = {
    {"char", 1, "char", "char"},
    {{}, std::nullopt, "unsigned char", "unsigned_char"},
    {"int", 3, "int", "int"},
    {"unsigned", 3, "unsigned int", "unsigned_int"},  // "unsigned" alone, and "unsigned unsigned"
    {"long", 5, "long", "long"},
    {{}, std::nullopt, "unsigned long", "unsigned_long"},
    {"float", std::nullopt, "float", "float"},
    {"double", std::nullopt, "double", "double"},
    {"DD_STRING", std::nullopt, "DD_STRING", "DD_STRING"},
    {"DD_ITEM", std::nullopt, "DD_ITEM", "DD_ITEM"},
};

// The code of the type that `word` names alone.
std::optional<std::uint32_t> find_parameter_type(std::string_view word);

class ParameterValue final : public Value {
public:
    // `type` is a code of the table above.
    ParameterValue(Arena& arena, std::uint32_t type, ParameterMode mode, std::string_view name)
        : Value(ValueKind::PARAMETER), type_(type), mode_(mode), name_(arena.copy(name)) {}

    ValuePtr clone(Arena& arena) const override { return arena.make<ParameterValue>(type_, mode_, name_); }
    std::string to_string() const override;

    const ParameterType& type() const { return parameter_types[type_]; }
    ParameterMode mode() const { return mode_; }
    std::string_view name() const { return name_; }

private:
    std::uint32_t type_;
    ParameterMode mode_;
    std::string_view name_;
};

}  // namespace edd
