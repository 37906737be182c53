// SPDX-License-Identifier: Apache-2.0
// The hash of a name in the program's tables (macros, items). Eight bytes a step over the
// whole name: the library's hash goes byte by byte and cost more than the rest of a lookup.
// Every byte counts, so that names alike in most of their bytes (ch0001_CMD_READ,
// ch0002_CMD_READ) still spread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace edd {

namespace name_hash_detail {
inline std::uint64_t mix(std::uint64_t value) {
    value *= 0xFF51AFD7ED558CCDu;
    return value ^ (value >> 32);
}
}  // namespace name_hash_detail

inline std::uint32_t name_hash(std::string_view name) {
    using name_hash_detail::mix;
    std::uint64_t hash = name.size() * 0x9E3779B97F4A7C15u;
    std::size_t i = 0;
    for (; i + 8 <= name.size(); i += 8) {
        std::uint64_t part;
        std::memcpy(&part, name.data() + i, sizeof part);
        hash = mix(hash ^ part);
    }
    // The last bytes: again the last eight, overlapping, where there are eight.
    std::uint64_t rest = 0;
    if (name.size() >= 8) std::memcpy(&rest, name.data() + name.size() - 8, sizeof rest);
    else
        for (; i < name.size(); ++i) rest = rest << 8 | static_cast<unsigned char>(name[i]);
    return static_cast<std::uint32_t>(mix(hash ^ rest));
}

}  // namespace edd
