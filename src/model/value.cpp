#include "model/value.hpp"

namespace edd {

void Value::collect_dictionary_keys(KeySet&) const {}

const std::string& Value::note_text() const {
    static const std::string none;
    return notes_ ? notes_->text : none;
}

std::ostream& operator<<(std::ostream& out, const Value& value) { return out << value.to_string(); }

}  // namespace edd
