// SPDX-License-Identifier: Apache-2.0
#include "model/like_resolution.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"

namespace edd {

namespace {

// Resolves chains base first, without recursion, so that chains of any length work; each
// item is resolved once.
class Resolver {
public:
    Resolver(ItemTable& table, Diagnostics& diagnostics)
        : table_(table), diagnostics_(diagnostics), resolved_(table.size(), false) {}

    void resolve(Item& start) {
        std::vector<Item*> chain{&start};
        std::unordered_map<std::string_view, std::size_t> position{{start.name(), 0}};
        std::size_t cycle_start = static_cast<std::size_t>(-1);  // none
        for (Item* current = &start;;) {
            if (resolved(*current) || !current->has_parent() || !table_.contains(current->parent())) break;
            Item& base = table_.get(current->parent());
            if (auto seen = position.find(base.name()); seen != position.end()) {
                cycle_start = seen->second;
                break;
            }
            position.emplace(base.name(), chain.size());
            chain.push_back(&base);
            current = &base;
        }
        // Items on a cycle stay as parsed and are reported in chain order; the items before
        // the cycle then resolve base first.
        const std::size_t resolvable = std::min(cycle_start, chain.size());
        for (std::size_t i = resolvable; i < chain.size(); ++i) resolve_one(*chain[i], true);
        for (std::size_t i = resolvable; i-- > 0;) resolve_one(*chain[i], false);
    }

private:
    std::vector<bool>::reference resolved(const Item& item) {
        return resolved_[static_cast<std::size_t>(&item - table_.items().data())];
    }

    void report(const Item& item, std::string_view message) {
        diagnostics_.positioned(item.origin().file_name(), item.origin().line, message);
    }

    void resolve_one(Item& item, bool on_cycle) {
        if (resolved(item)) return;
        resolved(item) = true;
        if (!item.has_parent()) return;
        if (!table_.contains(item.parent())) {
            report(item, format_message(messages::like_undefined, {item.parent(), item.name()}));
        } else if (on_cycle) {
            report(item, format_message(messages::like_cycle, {item.name()}));
        } else {
            const Item& base = table_.get(item.parent());
            if (item.type() == ItemType::UNKNOWN) item.set_type(base.type());
            for (const Item::Slot& slot : base.attributes())
                if (!item.has_attribute(slot.id)) item.set_attribute(slot.id, slot.value);
            item.set_parent({});
        }
    }

    ItemTable& table_;
    Diagnostics& diagnostics_;
    std::vector<bool> resolved_;
};

}  // namespace

void resolve_like_items(Description& description, Diagnostics& diagnostics) {
    Resolver resolver(description.items, diagnostics);
    for (Item& item : description.items.items())
        if (item.has_parent()) resolver.resolve(item);
}

}  // namespace edd
