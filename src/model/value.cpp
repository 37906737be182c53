#include "model/value.hpp"

namespace edd {

void Value::collect_dictionary_keys(KeySet&) const {}

}  // namespace edd
