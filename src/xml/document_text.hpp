// SPDX-License-Identifier: Apache-2.0
// The one rule by which every model string becomes document text. The document is UTF-8;
// what the writer does with the result (escaping, layout) is its own business.
#pragma once

#include <string>
#include <string_view>

namespace edd {

// Well-formed UTF-8 is kept; any other string is read as Latin-1 and re-encoded. Then every
// character XML 1.0 cannot carry (C0 controls but tab, LF and CR; U+FFFE; U+FFFF) becomes
// U+FFFD.
std::string to_document_text(std::string_view bytes);

// True when to_document_text would return the bytes unchanged because they are ASCII with
// no forbidden control; callers may then skip the copy.
bool is_plain_document_text(std::string_view bytes);

// True for strict UTF-8: shortest forms only, no surrogates, nothing above U+10FFFF.
bool is_well_formed_utf8(std::string_view bytes);

}  // namespace edd
