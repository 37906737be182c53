#include "model/reference_value.hpp"

namespace edd {

std::string ReferenceValue::to_string() const {
    if (!has_argument()) return name_;
    return name_ + '(' + argument_->to_string() + ')';
}

}  // namespace edd
