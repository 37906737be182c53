// SPDX-License-Identifier: Apache-2.0
#include "model/expression.hpp"

#include <stdexcept>

namespace edd {

Expression::Expression(Arena&, ValuePtr a, ValuePtr b) : Value(ValueKind::EXPRESSION), parts_{a, b}, count_(2) {
    for (const ValuePtr& part : parts()) take_keys_of(part);
}

Expression::Expression(Arena&, ValuePtr a, ValuePtr b, ValuePtr c)
    : Value(ValueKind::EXPRESSION), parts_{a, b, c}, count_(3) {
    for (const ValuePtr& part : parts()) take_keys_of(part);
}

Expression::Expression(Arena&, ValuePtr a, ValuePtr b, ValuePtr c, ValuePtr d, ValuePtr e)
    : Value(ValueKind::EXPRESSION), parts_{a, b, c, d, e}, count_(5) {
    for (const ValuePtr& part : parts()) take_keys_of(part);
}

ValuePtr Expression::clone(Arena& arena) const {
    auto copied = [&](std::size_t i) { return clone_of(parts_[i], arena); };
    switch (count_) {
    case 2: return arena.make<Expression>(copied(0), copied(1));
    case 3: return arena.make<Expression>(copied(0), copied(1), copied(2));
    default: return arena.make<Expression>(copied(0), copied(1), copied(2), copied(3), copied(4));
    }
}

std::string Expression::to_string() const {
    std::string text;
    for (const ValuePtr& part : parts()) {
        text += part->to_string();
        text += ' ';
    }
    return text;
}

void Expression::collect_dictionary_keys(KeySet& keys) const {
    for (const ValuePtr& part : parts()) collect_keys(part, keys);
}

}  // namespace edd
