// The resolving pass: items defined LIKE another item take over the base's attributes.
#pragma once

#include "diagnostics/diagnostics.hpp"
#include "model/description.hpp"

namespace edd {

// The description as it is written: every item in table order, each LIKE item replaced by
// its resolution (own attributes first, then the base's for the ids it leaves unset; the
// base's type when the item named none). An undefined base or a cycle of bases is reported
// on `diagnostics` and leaves the item as parsed.
Description resolve_like_items(const Description& parsed, Diagnostics& diagnostics);
// The same, taking the parsed description apart instead of copying its items.
Description resolve_like_items(Description&& parsed, Diagnostics& diagnostics);

}  // namespace edd
