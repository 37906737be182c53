// SPDX-License-Identifier: Apache-2.0
// Which attributes each item type defines. An attribute outside its item type's row is
// reported and dropped by the parser; the profiles decide separately what a dialect allows.
#pragma once

#include "model/item_type.hpp"

namespace edd {

// True for every attribute of an item type outside the known ones (a LIKE item before it
// is resolved).
bool item_defines_attribute(ItemType type, AttributeId id);

}  // namespace edd
