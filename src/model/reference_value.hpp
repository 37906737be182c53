// SPDX-License-Identifier: Apache-2.0
// A reference to another item by name, with an optional argument (an index, say). Copies
// share the argument; the argument's keys are not the reference's.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/value.hpp"

namespace edd {

class ReferenceValue final : public Value {
public:
    ReferenceValue(Arena& arena, std::string_view name) : Value(ValueKind::REFERENCE) {
        const std::string_view kept = arena.copy(name);
        name_size_ = static_cast<std::uint32_t>(kept.size());
        name_data_ = kept.data();
    }

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;

    std::string_view name() const { return {name_data_, name_size_}; }
    void set_argument(ValuePtr value) { argument_ = value; }
    bool has_argument() const { return argument_.is_set(); }
    const ValuePtr& argument() const { return argument_; }

private:
    std::uint32_t name_size_;  // beside the base's fields, as in SimpleValue
    const char* name_data_;
    ValuePtr argument_;
};

}  // namespace edd
