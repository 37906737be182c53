// SPDX-License-Identifier: Apache-2.0
// Reading and spelling identification numbers for the import searches.
#include "validation/identification_number.hpp"

#include <charconv>
#include <stdexcept>

#include "diagnostics/messages.hpp"
#include "model/simple_value.hpp"
#include "text/text_utils.hpp"

namespace edd {

namespace {
const SimpleValue* integer_of(const ValuePtr& field) {
    const auto* simple = dynamic_cast<const SimpleValue*>(field.get());
    return simple != nullptr && simple->kind() == ValueKind::INTEGER ? simple : nullptr;
}
}  // namespace

std::uint64_t identification_number(const ValuePtr& field) {
    const SimpleValue* simple = integer_of(field);
    if (simple == nullptr) throw std::runtime_error(std::string(messages::no_identifiers_supported));
    return to_integer(simple->text());
}

std::uint64_t identification_number_or_zero(const ValuePtr& field) {
    const SimpleValue* simple = integer_of(field);
    return simple == nullptr ? 0 : to_integer(simple->text());
}

std::string hex_digits(std::uint64_t value, std::size_t width) {
    char buffer[16];
    const auto result = std::to_chars(std::begin(buffer), std::end(buffer), value, 16);
    const std::string digits(buffer, result.ptr);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

}  // namespace edd
