#include "frontend/macro_table.hpp"

#include <stdexcept>

#include "diagnostics/messages.hpp"

namespace edd {

const Macro* MacroTable::find(std::string_view name) const {
    auto it = macros_.find(name);
    return it == macros_.end() ? nullptr : &it->second;
}

void MacroTable::add(Macro macro) {
    if (contains(macro.name)) throw std::logic_error(std::string(messages::table_macro_already_defined));
    std::string name = macro.name;
    macros_.emplace(std::move(name), std::move(macro));
}

void MacroTable::remove(std::string_view name) {
    auto it = macros_.find(name);
    if (it == macros_.end()) throw std::logic_error(std::string(messages::table_macro_not_existent));
    macros_.erase(it);
}

}  // namespace edd
