// SPDX-License-Identifier: Apache-2.0
// An expression kept in source order: operators and brackets are OPERATOR values between
// their operands. Nothing is evaluated.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "model/value.hpp"

namespace edd {

class Expression final : public Value {
public:
    // (operand, postfix) or (prefix, operand)
    Expression(Arena&, ValuePtr a, ValuePtr b);
    // (left, operator, right) or ("(", inner, ")")
    Expression(Arena&, ValuePtr a, ValuePtr b, ValuePtr c);
    // (condition, "?", then, ":", else)
    Expression(Arena&, ValuePtr a, ValuePtr b, ValuePtr c, ValuePtr d, ValuePtr e);

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    std::size_t part_count() const { return count_; }
    const ValuePtr& part(std::size_t index) const { return parts_.at(index); }
    std::span<const ValuePtr> parts() const { return {parts_.data(), count_}; }

private:
    std::array<ValuePtr, 5> parts_;
    std::size_t count_;
};

}  // namespace edd
