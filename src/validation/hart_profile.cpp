// SPDX-License-Identifier: Apache-2.0
// The HART dialect: three item types and five command attributes refused; imports are
// found by searching a library tree laid out by manufacturer, device type and revisions.
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/file_names.hpp"
#include "model/identification.hpp"
#include "validation/identification_number.hpp"
#include "validation/profile.hpp"

namespace edd {

namespace {

constexpr ItemType refused_items[] = {ItemType::CONNECTION, ItemType::RESPONSE_CODES, ItemType::VARIABLE_LIST};
constexpr AttributeId refused_command_attributes[] = {AttributeId::BLOCK, AttributeId::HEADER, AttributeId::INDEX,
                                                      AttributeId::MODULE, AttributeId::SLOT};

template <class Table, class Entry>
bool contains(const Table& table, Entry entry) {
    return std::ranges::find(table, entry) != std::end(table);
}

// "*.ddl" as Windows matches it: the suffix in any case.
bool is_description_file(const std::filesystem::directory_entry& entry) {
    std::error_code error;
    const std::string name = entry.path().filename().string();
    return name.size() >= 4 && equal_ignoring_case(std::string_view(name).substr(name.size() - 4), ".ddl") &&
           !entry.is_directory(error);
}

// The first *.ddl in `directory` by name; empty when there is none or the directory cannot
// be read. Listings come in no defined order, so the smallest name is taken. The directory
// is looked up as on Windows when it does not exist as written.
std::string first_description_file(const std::string& directory) {
    const std::optional<std::string> found = find_file_name(directory);
    if (!found) return {};
    std::error_code error;
    std::filesystem::directory_iterator it(*found, error);
    std::vector<std::string> names;
    for (const std::filesystem::directory_iterator end; !error && it != end; it.increment(error)) {
        if (is_description_file(*it)) names.push_back(it->path().filename().string());
    }
    if (names.empty()) return {};
    return *std::ranges::min_element(names);
}

}  // namespace

bool HartProfile::allows_item(ItemType type) const { return !contains(refused_items, type); }

bool HartProfile::allows_attribute(ItemType type, AttributeId id) const {
    return type != ItemType::COMMAND || !contains(refused_command_attributes, id);
}

std::string HartProfile::import_file(const Identification& identification,
                                     const std::vector<std::string>& include_paths) const {
    // Manufacturer and device type are the fields an identifier may stand for; only they
    // are checked.
    const std::string relative = hex_digits(identification_number(identification.manufacturer), 2) + '/' +
                                 hex_digits(identification_number(identification.device_type), 2) + '/' +
                                 hex_digits(identification_number_or_zero(identification.device_revision), 2) +
                                 hex_digits(identification_number_or_zero(identification.dd_revision), 2) + '/';
    // The result stays relative: IMPORT resolves it against the include paths like any name.
    for (const std::string& include_path : include_paths) {
        const std::string file = first_description_file(include_path + '/' + relative);
        if (!file.empty()) return relative + file;
    }
    const std::string file = first_description_file(relative);
    return file.empty() ? std::string() : relative + file;
}

}  // namespace edd
