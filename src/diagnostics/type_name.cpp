// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/type_name.hpp"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace edd {

std::string readable_type_name(const std::type_info& type) {
    int status = 0;
    std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return status == 0 && name ? std::string(name.get()) : std::string(type.name());
}

}  // namespace edd
