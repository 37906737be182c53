// SPDX-License-Identifier: Apache-2.0
// What the checks found: each finding with its position, kept until all checks have run
// and then printed in source order.
#pragma once

#include <array>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "checker/checks.hpp"
#include "model/item.hpp"

namespace edd {

using CheckSelection = std::array<bool, check_count>;

class Findings {
public:
    explicit Findings(const CheckSelection& selection) : selection_(selection) {}

    bool wanted(CheckId id) const { return selection_[static_cast<std::size_t>(id)]; }
    // Formats the check's message with `args`; a check not selected adds nothing.
    void add(CheckId id, Position where, std::initializer_list<std::string_view> args);
    std::size_t size() const { return findings_.size(); }
    // One line each, by file (in the order the files were first read) and line; findings
    // on one line keep the order they were found in.
    void print(std::ostream& out);

private:
    struct Finding {
        Position where;
        CheckId id;
        std::string text;
    };
    CheckSelection selection_;
    std::vector<Finding> findings_;
};

}  // namespace edd
