// The table of defined macros.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frontend/token.hpp"

namespace edd {

struct Macro {
    std::string name;
    std::vector<std::string> parameters;  // empty for an object-like macro
    std::vector<Token> body;              // as read, inner blanks included

    bool function_like() const { return !parameters.empty(); }
};

class MacroTable {
public:
    const Macro* find(std::string_view name) const;
    bool contains(std::string_view name) const { return find(name) != nullptr; }
    // Throws std::logic_error when the name is taken; the directives check first.
    void add(Macro macro);
    // Throws std::logic_error when there is no such macro.
    void remove(std::string_view name);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
    };
    std::unordered_map<std::string, Macro, Hash, std::equal_to<>> macros_;
};

}  // namespace edd
