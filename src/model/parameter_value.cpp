// SPDX-License-Identifier: Apache-2.0
#include "model/parameter_value.hpp"

#include <algorithm>

namespace edd {

std::optional<std::uint32_t> find_parameter_type(std::string_view word) {
    if (word.empty()) return std::nullopt;
    const auto it = std::ranges::find(parameter_types, word, &ParameterType::word);
    if (it == std::end(parameter_types)) return std::nullopt;
    return static_cast<std::uint32_t>(it - std::begin(parameter_types));
}

std::string ParameterValue::to_string() const {
    return std::string(type().name) + (mode_ == ParameterMode::CALL_BY_REFERENCE ? "& " : " ") + std::string(name_);
}

}  // namespace edd
