// Base64 for binary content the writer embeds (images): RFC 4648 alphabet, "=" padding,
// one line without breaks.
#pragma once

#include <string>
#include <string_view>

namespace edd {

std::string base64(std::string_view bytes);

}  // namespace edd
