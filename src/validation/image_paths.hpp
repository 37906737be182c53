// SPDX-License-Identifier: Apache-2.0
// The image files a description names: every path any condition of an IMAGE's PATH could
// select, paired with the directory of the file that defines the image. Reading them is the writer's.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "model/item.hpp"

namespace edd {

// Appends (directory of the defining file, path as written) for each string in PATH, IF and
// SELECT branches included, in source order, for an IMAGE item. Throws std::logic_error for
// an IMAGE without PATH and a PATH holding anything but strings and conditionals.
void collect_paths(const Item& image, std::vector<std::pair<std::string, std::string>>& paths);

// The names an image file (directory, path as written) is looked for under, in order:
// beside the defining file, then under each include path.
std::vector<std::string> image_file_candidates(const std::string& directory, const std::string& path,
                                               const std::vector<std::string>& include_paths);

}  // namespace edd
