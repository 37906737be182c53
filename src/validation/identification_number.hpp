// SPDX-License-Identifier: Apache-2.0
// Identification numbers as the import searches of the profiles read and spell them.
#pragma once

#include <cstdint>
#include <string>

#include "model/value.hpp"

namespace edd {

// The value of an integer field. Throws std::runtime_error "No Identifiers supported."
// for an unset field or one that holds anything but an integer literal (an identifier).
std::uint64_t identification_number(const ValuePtr& field);

// The same without the check: a field that holds no integer reads as 0.
std::uint64_t identification_number_or_zero(const ValuePtr& field);

// Lower-case hex, padded with '0' to at least `width` digits; longer numbers stay whole.
std::string hex_digits(std::uint64_t value, std::size_t width);

}  // namespace edd
