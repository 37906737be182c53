// SPDX-License-Identifier: Apache-2.0
#include "frontend/macro_table.hpp"

namespace edd {

void MacroTable::add(Macro macro) {
    if (!macro.name.empty()) shapes_[static_cast<unsigned char>(macro.name[0])] |= std::uint64_t{1} << shape_bit(macro.name);
    std::shared_ptr<const Macro> kept = make_shared_in<const Macro>(memory(), std::move(macro));
    const std::string_view name = kept->name;
    macros_.emplace(name, std::move(kept));
    ++version_;
}

void MacroTable::remove(std::string_view name) {
    if (auto it = macros_.find(name); it != macros_.end()) macros_.erase(it);
}

}  // namespace edd
