// An expression kept in source order: operators and brackets are OPERATOR values between
// their operands. Nothing is evaluated; expressions never compare equal.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/value.hpp"

namespace edd {

class Expression final : public ValueOf<Expression, ValueKind::EXPRESSION> {
public:
    // (operand, postfix) or (prefix, operand)
    Expression(ValuePtr a, ValuePtr b);
    // (left, operator, right) or ("(", inner, ")")
    Expression(ValuePtr a, ValuePtr b, ValuePtr c);
    // (condition, "?", then, ":", else)
    Expression(ValuePtr a, ValuePtr b, ValuePtr c, ValuePtr d, ValuePtr e);
    Expression(const Expression& other);
    Expression& operator=(const Expression&) = delete;

    bool equals(const Value&) const override { return false; }
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    std::size_t part_count() const { return parts_.size(); }
    const ValuePtr& part(std::size_t index) const { return parts_.at(index); }

private:
    std::vector<ValuePtr> parts_;
};

}  // namespace edd
