// SPDX-License-Identifier: Apache-2.0
#include "frontend/token.hpp"

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"

namespace edd {

std::string to_string(const Token& token) {
    return format_message(messages::printed_token, {kind_to_string(token.kind()), token.text()});
}

}  // namespace edd
