// SPDX-License-Identifier: Apache-2.0
#include "frontend/macro_table.hpp"

#include <utility>

namespace edd {

void MacroTable::add(Macro macro) {
    if (!macro.name.empty()) shapes_[static_cast<unsigned char>(macro.name[0])] |= std::uint64_t{1} << shape_bit(macro.name);
    if (2 * (count_ + 1) > slots_.size()) grow();
    std::shared_ptr<const Macro> kept = make_shared_in<const Macro>(memory_, std::move(macro));
    const std::string_view name = kept->name;
    place({name, std::move(kept)});
    ++count_;
    ++version_;
}

// A removed slot is filled from the rest of its cluster: every name after it that probing
// would no longer reach past the gap moves into it, and the gap moves on to where it was.
void MacroTable::remove(std::string_view name) {
    const Slot* found = slot_of(name);
    if (found == nullptr) return;
    const std::size_t mask = slots_.size() - 1;
    std::size_t gap = static_cast<std::size_t>(found - &slots_[0]);
    for (std::size_t i = (gap + 1) & mask; !slots_[i].name.empty(); i = (i + 1) & mask) {
        const std::size_t home = Hash{}(slots_[i].name) & mask;
        if (((i - home) & mask) >= ((i - gap) & mask)) {
            slots_[gap] = std::move(slots_[i]);
            gap = i;
        }
    }
    slots_[gap] = Slot{};
    --count_;
}

void MacroTable::place(Slot slot) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = Hash{}(slot.name) & mask;
    while (!slots_[i].name.empty()) i = (i + 1) & mask;
    slots_[i] = std::move(slot);
}

void MacroTable::grow() {
    GrowingArray<Slot> old = std::move(slots_);
    slots_ = GrowingArray<Slot>();
    slots_.grow_to(old.empty() ? 64 : 2 * old.size());
    for (Slot& slot : old.elements())
        if (!slot.name.empty()) place(std::move(slot));
}

}  // namespace edd
