#include "model/value_kind.hpp"

#include <iterator>
#include <string_view>

namespace edd {

namespace {
constexpr std::string_view kind_names[] = {
    "UNDEFINED", "STRING", "DICTIONARY_REFERENCE", "INTEGER", "FLOAT", "KEYWORD",
    "TYPE", "VALUE_LIST", "IDENTIFIER", "CODE", "IF_CONDITIONAL", "SELECT_CONDITIONAL",
    "OPERATOR", "EXPRESSION", "COMPOSED", "REFERENCE", "METHOD_CALL",
};
}  // namespace

std::string to_string(ValueKind kind) {
    const auto code = static_cast<std::uint32_t>(kind);
    if (code < std::size(kind_names)) return std::string(kind_names[code]);
    return std::to_string(code);
}

std::ostream& operator<<(std::ostream& out, ValueKind kind) { return out << to_string(kind); }

}  // namespace edd
