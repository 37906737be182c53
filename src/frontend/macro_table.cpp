#include "frontend/macro_table.hpp"

#include <stdexcept>

#include "diagnostics/messages.hpp"

namespace edd {

void MacroTable::add(Macro macro) {
    if (contains(macro.name)) throw std::logic_error(std::string(messages::table_macro_already_defined));
    if (!macro.name.empty()) shapes_[static_cast<unsigned char>(macro.name[0])] |= std::uint64_t{1} << shape_bit(macro.name);
    std::string name = macro.name;
    macros_.emplace(std::move(name), std::move(macro));
    ++version_;
}

void MacroTable::remove(std::string_view name) {
    auto it = macros_.find(name);
    if (it == macros_.end()) throw std::logic_error(std::string(messages::table_macro_not_existent));
    macros_.erase(it);
}

}  // namespace edd
