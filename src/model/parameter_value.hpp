// One formal parameter of a method: type code, passing mode and name.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/value.hpp"

namespace edd {

enum class ParameterMode : std::uint32_t { CALL_BY_VALUE = 0, CALL_BY_REFERENCE = 1 };

// "char", "unsigned char", ... "DD_ITEM" for codes 0 to 9; other codes as numbers.
std::string parameter_type_name(std::uint32_t type);

class ParameterValue final : public Value {
public:
    ParameterValue(Arena& arena, std::uint32_t type, std::uint32_t mode, std::string_view name)
        : Value(ValueKind::PARAMETER), type_(type), mode_(mode), name_(arena.copy(name)) {}

    ValuePtr clone(Arena& arena) const override { return arena.make<ParameterValue>(type_, mode_, name_); }
    std::string to_string() const override;

    std::uint32_t type() const { return type_; }
    std::uint32_t mode() const { return mode_; }
    std::string_view name() const { return name_; }

private:
    std::uint32_t type_;
    std::uint32_t mode_;
    std::string_view name_;
};

}  // namespace edd
