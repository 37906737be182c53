// SPDX-License-Identifier: Apache-2.0
#include "model/value.hpp"

namespace edd {

void Value::collect_dictionary_keys(KeySet&) const {}

}  // namespace edd
