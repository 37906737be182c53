// SPDX-License-Identifier: Apache-2.0
#include "model/like_resolution.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "files/reserved_range.hpp"

namespace edd {

namespace {

// Resolves chains base first, without recursion, so that chains of any length work; each
// item is resolved once. An item's state says whether it is resolved or on the chain being
// followed: a base met on the chain closes a cycle, without a lookup of its own.
class Resolver {
public:
    Resolver(ItemTable& table, Diagnostics& diagnostics)
        : table_(table),
          diagnostics_(diagnostics),
          states_(ReservedRange::cleared(table.size() * sizeof(State))),
          state_(reinterpret_cast<State*>(states_.bytes())) {}

    bool resolved(const Item& item) { return state(item) == State::resolved; }

    void resolve(Item& start) {
        chain_.assign(1, &start);
        state(start) = State::on_chain;
        std::size_t cycle_start = static_cast<std::size_t>(-1);  // none
        for (Item* current = &start;;) {
            if (!current->has_parent()) break;
            Item* base = find(current->parent());
            if (base == nullptr || state(*base) == State::resolved) break;
            if (state(*base) == State::on_chain) {
                cycle_start = static_cast<std::size_t>(std::ranges::find(chain_, base) - chain_.begin());
                break;
            }
            state(*base) = State::on_chain;
            chain_.push_back(base);
            current = base;
        }
        // Items on a cycle stay as parsed and are reported in chain order; the items before
        // the cycle then resolve base first.
        const std::size_t resolvable = std::min(cycle_start, chain_.size());
        for (std::size_t i = resolvable; i < chain_.size(); ++i) resolve_one(*chain_[i], true);
        for (std::size_t i = resolvable; i-- > 0;) resolve_one(*chain_[i], false);
    }

private:
    enum class State : std::uint8_t { open, on_chain, resolved };  // open: cleared memory

    State& state(const Item& item) { return state_[static_cast<std::size_t>(&item - table_.items().data())]; }
    // The item of the name, or null: one lookup, then the same item as a changeable one.
    Item* find(std::string_view name) {
        const Item* item = std::as_const(table_).find(name);
        if (item == nullptr) return nullptr;
        return &table_.items()[static_cast<std::size_t>(item - std::as_const(table_).items().data())];
    }

    void report(const Item& item, std::string_view message) {
        diagnostics_.positioned(item.origin().file_name(), item.origin().line, message);
    }

    void resolve_one(Item& item, bool on_cycle) {
        state(item) = State::resolved;
        if (!item.has_parent()) return;
        const Item* base = find(item.parent());
        if (base == nullptr) {
            report(item, format_message(messages::like_undefined, {item.parent(), item.name()}));
        } else if (on_cycle) {
            report(item, format_message(messages::like_cycle, {item.name()}));
        } else {
            if (item.type() == ItemType::UNKNOWN) item.set_type(base->type());
            for (const Item::Slot& slot : base->attributes())
                if (!item.has_attribute(slot.id)) item.set_attribute(slot.id, slot.value);
            item.set_parent({});
        }
    }

    ItemTable& table_;
    Diagnostics& diagnostics_;
    ReservedRange states_;
    State* state_;  // of each item, in states_
    std::vector<Item*> chain_;  // kept from one chain to the next
};

}  // namespace

void resolve_like_items(Description& description, Diagnostics& diagnostics) {
    Resolver resolver(description.items, diagnostics);
    for (Item& item : description.items.items())
        if (item.has_parent() && !resolver.resolved(item)) resolver.resolve(item);
}

}  // namespace edd
