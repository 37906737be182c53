// SPDX-License-Identifier: Apache-2.0
// Choosing the profile of a run.
#include "validation/profile.hpp"

namespace edd {

const Profile& select_profile(std::string_view name) {
    static const ProfibusProfile profibus;
    static const HartProfile hart;
    static const NullProfile null;
    if (name == "PROFIBUS") return profibus;
    if (name == "HART") return hart;
    return null;
}

}  // namespace edd
