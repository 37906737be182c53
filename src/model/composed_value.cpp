#include "model/composed_value.hpp"

namespace edd {

std::string ComposedValue::to_string() const {
    std::string text = "{";
    bool first = true;
    for (const Attribute& attribute : attributes_.all()) {
        if (!first) text += ", ";
        first = false;
        text += attribute.value()->to_string();
    }
    text += '}';
    return text;
}

void ComposedValue::collect_dictionary_keys(KeySet& keys) const {
    for (const Attribute& attribute : attributes_.all()) attribute.value()->collect_dictionary_keys(keys);
}

}  // namespace edd
