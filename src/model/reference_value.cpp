// SPDX-License-Identifier: Apache-2.0
#include "model/reference_value.hpp"

namespace edd {

ValuePtr ReferenceValue::clone(Arena& arena) const {
    auto* copy = arena.make<ReferenceValue>(name());
    copy->argument_ = argument_;
    return copy;
}

std::string ReferenceValue::to_string() const {
    if (!has_argument()) return std::string(name());
    return std::string(name()) + '(' + argument_->to_string() + ')';
}

}  // namespace edd
