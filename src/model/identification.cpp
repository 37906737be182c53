#include "model/identification.hpp"

namespace edd {

namespace {
std::string text_of(const ValuePtr& value) { return value.is_set() ? value->to_string() : std::string(); }
}  // namespace

std::string to_string(const Identification& id) {
    return "MANUFACTURER " + text_of(id.manufacturer) + ", DEVICE_TYPE " + text_of(id.device_type) +
           ", DEVICE_REVISION " + text_of(id.device_revision) + ", DD_REVISION " + text_of(id.dd_revision) +
           ", EDD_PROFILE " + text_of(id.edd_profile) + ", EDD_VERSION " + text_of(id.edd_version) +
           ", MANUFACTURER_EXT \"" + text_of(id.manufacturer_ext) + '"';
}

}  // namespace edd
