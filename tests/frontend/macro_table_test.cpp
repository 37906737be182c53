// SPDX-License-Identifier: Apache-2.0
// The macro table finds a name by probing from its hash; a removal closes the gap it leaves
// by moving later names of the same cluster back, so that every name still defined stays
// reachable and none removed is found. Checked against a plain set through rounds of
// definitions and removals that leave long clusters, wrapping round the table's end.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

#include "frontend/macro_table.hpp"
#include "frontend/token_memory.hpp"

namespace edd {
namespace {

// Built with append: GCC 12 warns falsely on a sum of a literal and a string.
std::string macro_name(unsigned number) { return std::string("M").append(std::to_string(number)); }

TEST(MacroTable, RemovalsKeepEveryOtherNameReachable) {
    TokenMemory memory;
    MacroTable table(&memory);
    std::set<std::string> defined;
    const auto name = [](unsigned i) { return macro_name(i * 7919u % 4099u); };
    const auto define = [&](const std::string& text) {
        if (!defined.insert(text).second) return;
        table.add(Macro{std::pmr::string(text, &memory), std::pmr::vector<std::pmr::string>(&memory), nullptr});
    };
    for (unsigned round = 0; round < 6; ++round) {
        for (unsigned i = 0; i < 1500; ++i) define(name(round * 1500 + i));
        for (unsigned i = round; i < 4099; i += 3) {
            const std::string text = macro_name(i);
            if (defined.erase(text) != 0) table.remove(text);
        }
        for (unsigned i = 0; i < 4099; ++i) {
            const std::string text = macro_name(i);
            const std::shared_ptr<const Macro>* found = table.find(text);
            ASSERT_EQ(found != nullptr, defined.contains(text)) << text << " in round " << round;
            if (found != nullptr) {
                ASSERT_EQ(std::string_view((*found)->name), text);
            }
        }
    }
}

}  // namespace
}  // namespace edd
