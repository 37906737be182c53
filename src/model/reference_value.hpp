// SPDX-License-Identifier: Apache-2.0
// A reference to another item by name, with an optional argument (an index, say). Copies
// share the argument; the argument's keys are not the reference's.
#pragma once

#include <string>
#include <string_view>

#include "model/value.hpp"

namespace edd {

class ReferenceValue final : public Value {
public:
    ReferenceValue(Arena& arena, std::string_view name) : Value(ValueKind::REFERENCE), name_(arena.copy(name)) {}

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;

    std::string_view name() const { return name_; }
    void set_argument(ValuePtr value) { argument_ = value; }
    bool has_argument() const { return argument_.is_set(); }
    const ValuePtr& argument() const { return argument_; }

private:
    std::string_view name_;
    ValuePtr argument_;
};

}  // namespace edd
