#include "model/value.hpp"

namespace edd {

void Value::collect_dictionary_keys(KeySet&) const {}

std::ostream& operator<<(std::ostream& out, const Value& value) { return out << value.to_string(); }

}  // namespace edd
