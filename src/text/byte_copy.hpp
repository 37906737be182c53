// SPDX-License-Identifier: Apache-2.0
// The copy for the many short pieces the model keeps and the writer puts out (names,
// values, tokens of code): inline, without a library call for the common sizes.
#pragma once

#include <cstddef>
#include <cstring>

namespace edd {

// Copies `size` bytes and returns the end of the copy. Short pieces go as two overlapping
// moves of a fixed size; only long ones call memcpy.
inline char* copy_bytes(char* to, const char* from, std::size_t size) {
    if (size >= 8) {
        if (size > 32) {
            std::memcpy(to, from, size);
        } else if (size > 16) {
            std::memcpy(to, from, 16);
            std::memcpy(to + size - 16, from + size - 16, 16);
        } else {
            std::memcpy(to, from, 8);
            std::memcpy(to + size - 8, from + size - 8, 8);
        }
    } else if (size >= 4) {
        std::memcpy(to, from, 4);
        std::memcpy(to + size - 4, from + size - 4, 4);
    } else if (size != 0) {  // an empty view may have no data at all
        to[0] = from[0];
        to[size / 2] = from[size / 2];
        to[size - 1] = from[size - 1];
    }
    return to + size;
}

}  // namespace edd
