// SPDX-License-Identifier: Apache-2.0
#include "frontend/macro_table.hpp"

#include <utility>

namespace edd {

void MacroTable::add(Macro macro) {
    if (!macro.name.empty()) shapes_[static_cast<unsigned char>(macro.name[0])] |= std::uint64_t{1} << shape_bit(macro.name);
    if (2 * (count_ + 1) > slots_.size()) grow();
    std::shared_ptr<const Macro> kept = make_shared_in<const Macro>(memory_, std::move(macro));
    const std::string_view name = kept->name;
    const std::uint32_t hash = name_hash(name);
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = hash & mask;
    while (!slots_[i].name.empty()) i = (i + 1) & mask;
    slots_[i] = {name, std::move(kept), hash};
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
        if (((i - slots_[i].hash) & mask) >= ((i - gap) & mask)) {
            slots_[gap] = std::move(slots_[i]);
            gap = i;
        }
    }
    slots_[gap] = Slot{};
    --count_;
}

// In place, by the stored hashes: each entry not yet placed is taken out of its slot and
// placed again by the new mask.
void MacroTable::grow() {
    const std::size_t old_slots = slots_.size();
    const std::size_t slots = old_slots == 0 ? 64 : 2 * old_slots;
    slots_.grow_to(slots);
    for (std::size_t i = 0; i < old_slots; ++i)
        if (!slots_[i].name.empty() && !slots_[i].placed) place_again(std::exchange(slots_[i], Slot{}), slots - 1);
    for (Slot& slot : slots_.elements()) slot.placed = false;
}

// An entry not yet placed in the way is swapped out and placed next, from its own start.
// Placed entries never move again, so every slot between an entry's start and the entry
// stays taken and a lookup still finds it.
void MacroTable::place_again(Slot slot, std::size_t mask) {
    std::size_t i = slot.hash & mask;
    while (!slot.name.empty()) {
        if (slots_[i].placed) {
            i = (i + 1) & mask;
            continue;
        }
        std::swap(slot, slots_[i]);
        slots_[i].placed = true;
        i = slot.hash & mask;
    }
}

}  // namespace edd
