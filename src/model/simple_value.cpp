// SPDX-License-Identifier: Apache-2.0
#include "model/simple_value.hpp"

namespace edd {

std::string SimpleValue::to_string() const {
    switch (kind()) {
    case ValueKind::STRING: return '"' + std::string(text_) + '"';
    case ValueKind::DICTIONARY_REFERENCE: return '[' + std::string(text_) + ']';
    default: return std::string(text_);
    }
}

void SimpleValue::collect_dictionary_keys(KeySet& keys) const {
    if (kind() == ValueKind::DICTIONARY_REFERENCE) keys.emplace(text_);
}

ValuePtr null_value() {
    static NullValue value;
    return &value;
}

}  // namespace edd
