// SPDX-License-Identifier: Apache-2.0
#include "frontend/macro_table.hpp"

namespace edd {

void MacroTable::add(Macro macro) {
    if (!macro.name.empty()) shapes_[static_cast<unsigned char>(macro.name[0])] |= std::uint64_t{1} << shape_bit(macro.name);
    std::string name = macro.name;
    macros_.emplace(std::move(name), std::make_shared<const Macro>(std::move(macro)));
    ++version_;
}

void MacroTable::remove(std::string_view name) {
    if (auto it = macros_.find(name); it != macros_.end()) macros_.erase(it);
}

}  // namespace edd
