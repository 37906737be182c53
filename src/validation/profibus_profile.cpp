// SPDX-License-Identifier: Apache-2.0
// The PROFIBUS dialect: three attributes refused on commands, imports found by a fixed path.
#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "model/identification.hpp"
#include "validation/identification_number.hpp"
#include "validation/profile.hpp"

namespace edd {

namespace {
constexpr AttributeId refused_command_attributes[] = {AttributeId::HEADER, AttributeId::MODULE, AttributeId::NUMBER};
}  // namespace

bool ProfibusProfile::allows_attribute(ItemType type, AttributeId id) const {
    return type != ItemType::COMMAND || std::ranges::find(refused_command_attributes, id) == std::end(refused_command_attributes);
}

std::string ProfibusProfile::import_file(const Identification& identification,
                                         const std::vector<std::string>&) const {
    const std::string manufacturer = hex_digits(identification_number_or_zero(identification.manufacturer), 4);
    const std::string device_type = hex_digits(identification_number_or_zero(identification.device_type), 4);
    const std::string device_revision = hex_digits(identification_number_or_zero(identification.device_revision), 4);
    const std::string dd_revision = hex_digits(identification_number_or_zero(identification.dd_revision), 4);
    return manufacturer + '/' + device_type + '/' + device_revision + '/' + manufacturer + '_' + device_type + '_' +
           device_revision + '_' + dd_revision + ".ddl";
}

}  // namespace edd
