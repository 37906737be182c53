// SPDX-License-Identifier: Apache-2.0
#include "files/temporary_files.hpp"

#include <array>
#include <csignal>
#include <cstring>

#include "files/platform.hpp"

namespace edd::temporary_files {

namespace {

enum State : int { free_slot = 0, removed_on_interrupt = 1, put_in_place_on_interrupt = 2 };

// A run has a handful of outputs at once (document, dump, dependency file, diagnostics).
constexpr std::size_t slots = 8;
constexpr std::size_t max_name = 4096;

struct Slot {
    volatile std::sig_atomic_t state = free_slot;
    char temporary[max_name];
    char target[max_name];
};
std::array<Slot, slots> table;

int state_of(OnInterrupt action) {
    return action == OnInterrupt::remove ? removed_on_interrupt : put_in_place_on_interrupt;
}

}  // namespace

int add(const std::string& temporary, const std::string& target, OnInterrupt action) {
    if (temporary.size() >= max_name || target.size() >= max_name) return -1;
    for (std::size_t i = 0; i < slots; ++i) {
        Slot& slot = table[i];
        if (slot.state != free_slot) continue;
        std::memcpy(slot.temporary, temporary.c_str(), temporary.size() + 1);
        std::memcpy(slot.target, target.c_str(), target.size() + 1);
        slot.state = state_of(action);  // last: the names are complete before a handler looks
        return static_cast<int>(i);
    }
    return -1;
}

void set_action(int slot, OnInterrupt action) {
    if (slot >= 0) table[static_cast<std::size_t>(slot)].state = state_of(action);
}

void forget(int slot) {
    if (slot >= 0) table[static_cast<std::size_t>(slot)].state = free_slot;
}

void clean_up() noexcept {
    for (Slot& slot : table) {
        const int state = slot.state;
        slot.state = free_slot;
        if (state == removed_on_interrupt) platform::remove(slot.temporary);
        if (state == put_in_place_on_interrupt) platform::replace(slot.temporary, slot.target);
    }
}

}  // namespace edd::temporary_files
