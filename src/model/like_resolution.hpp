// SPDX-License-Identifier: Apache-2.0
// The resolving pass: items defined LIKE another item take over the base's attributes, in
// place. Only those items change; nothing else of the description is copied.
#pragma once

#include "diagnostics/diagnostics.hpp"
#include "model/description.hpp"

namespace edd {

// Each LIKE item, in table order, gets its own attributes and then the base's for the ids
// it leaves unset, and the base's type when it named none; it then has no parent. An
// undefined base or a cycle of bases is reported and leaves the item as parsed.
void resolve_like_items(Description& description, Diagnostics& diagnostics);

}  // namespace edd
