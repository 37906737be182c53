// SPDX-License-Identifier: Apache-2.0
#include "checker/findings.hpp"

#include <algorithm>

#include "checker/checker_messages.hpp"
#include "diagnostics/format.hpp"

namespace edd {

void Findings::add(CheckId id, Position where, std::initializer_list<std::string_view> args) {
    if (wanted(id)) findings_.push_back({where, id, format_message(check_of(id).message, args)});
}

void Findings::print(std::ostream& out) {
    std::stable_sort(findings_.begin(), findings_.end(), [](const Finding& a, const Finding& b) {
        return a.where.file != b.where.file ? a.where.file < b.where.file : a.where.line < b.where.line;
    });
    for (const Finding& finding : findings_)
        out << format_message(checker_messages::finding, {finding.where.file_name(), std::to_string(finding.where.line),
                                                          finding.text, check_of(finding.id).name})
            << '\n';
}

}  // namespace edd
