// SPDX-License-Identifier: Apache-2.0
// Message templates: "%n" placeholders filled with up to six argument texts.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace edd {

// Fills the placeholders of `text`: "%" and a run of digits is one number n; argument n is
// inserted when n < 6 (an argument not supplied is empty), otherwise nothing. Any other "%"
// is copied as it stands.
std::string format_message(std::string_view text, std::initializer_list<std::string_view> args = {});

// The pieces joined in order: for texts built from values, not for messages.
std::string concat(std::initializer_list<std::string_view> pieces);

}  // namespace edd
