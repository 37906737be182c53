// SPDX-License-Identifier: Apache-2.0
// Walks an IMAGE's PATH value through its conditionals down to the strings.
#include "validation/image_paths.hpp"

#include <stdexcept>

#include "diagnostics/messages.hpp"
#include "model/conditionals.hpp"
#include "model/simple_value.hpp"
#include "text/text_utils.hpp"

namespace edd {

namespace {

using Paths = std::vector<std::pair<std::string, std::string>>;

void collect(const Value& value, const std::string& directory, Paths& paths) {
    switch (value.kind()) {
    case ValueKind::STRING:
        paths.emplace_back(directory, std::string(static_cast<const SimpleValue&>(value).text()));
        return;
    case ValueKind::IF_CONDITIONAL: {
        const auto& choice = static_cast<const IfConditional&>(value);
        collect(choice.then_value(), directory, paths);
        // An IF without ELSE selects no file when its condition fails.
        if (choice.has_else()) collect(choice.else_value(), directory, paths);
        return;
    }
    case ValueKind::SELECT_CONDITIONAL: {
        const auto& choice = static_cast<const SelectConditional&>(value);
        for (std::size_t i = 0; i < choice.case_count(); ++i) collect(choice.case_at(i).value(), directory, paths);
        if (choice.has_default()) collect(choice.default_value(), directory, paths);
        return;
    }
    // Identifiers, dictionary references, lists: nothing the build could open as a file.
    default: throw std::logic_error(std::string(messages::image_path_not_string));
    }
}

}  // namespace

void collect_paths(const Item& image, std::vector<std::pair<std::string, std::string>>& paths) {
    if (!image.has_attribute(AttributeId::PATH)) throw std::logic_error(std::string(messages::image_without_path));
    collect(*image.attribute(AttributeId::PATH), directory_of(image.origin().file_name()), paths);
}

std::vector<std::string> image_file_candidates(const std::string& directory, const std::string& path,
                                               const std::vector<std::string>& include_paths) {
    std::vector<std::string> candidates{directory + "/" + path};
    for (const std::string& include : include_paths) candidates.push_back(include + "/" + path);
    return candidates;
}

}  // namespace edd
