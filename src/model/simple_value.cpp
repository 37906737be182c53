// SPDX-License-Identifier: Apache-2.0
#include "model/simple_value.hpp"

namespace edd {

std::string SimpleValue::to_string() const {
    switch (kind()) {
    case ValueKind::STRING: return '"' + std::string(text()) + '"';
    case ValueKind::DICTIONARY_REFERENCE: return '[' + std::string(text()) + ']';
    default: return std::string(text());
    }
}

void SimpleValue::collect_dictionary_keys(KeySet& keys) const {
    if (kind() == ValueKind::DICTIONARY_REFERENCE) keys.emplace(text());
}

ValuePtr null_value() {
    static NullValue value;
    return &value;
}

}  // namespace edd
