#include "model/simple_value.hpp"

namespace edd {

bool SimpleValue::equals(const Value& other) const {
    const auto* simple = dynamic_cast<const SimpleValue*>(&other);
    return other.kind() == kind_ && simple != nullptr && simple->text_ == text_;
}

std::string SimpleValue::to_string() const {
    switch (kind_) {
    case ValueKind::STRING: return '"' + text_ + '"';
    case ValueKind::DICTIONARY_REFERENCE: return '[' + text_ + ']';
    default: return text_;
    }
}

void SimpleValue::collect_dictionary_keys(KeySet& keys) const {
    if (kind_ == ValueKind::DICTIONARY_REFERENCE) keys.insert(text_);
}

}  // namespace edd
