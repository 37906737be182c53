#include "validation/like_resolution.hpp"

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"

namespace edd {

namespace {

void report(Diagnostics& out, const Item& item, std::string_view message) {
    out.positioned(item.origin().file_name(), item.origin().line(), message);
}

Item merge(const Item& item, const Item& base) {
    const ItemType type = item.type() == ItemType::UNKNOWN ? base.type() : item.type();
    Item merged(type, item.name(), item.origin());
    for (AttributeId id : item.defined_attributes()) merged.set_attribute(id, item.attribute(id));
    for (AttributeId id : base.defined_attributes())
        if (!merged.has_attribute(id)) merged.set_attribute(id, base.attribute(id));
    return merged;
}

// Resolves chains base first, without recursion, so that chains of any length work; each
// item is resolved once.
class Resolver {
public:
    Resolver(const ItemTable& table, Diagnostics& diagnostics) : table_(table), diagnostics_(diagnostics) {}

    const Item& resolve(const Item& start) {
        std::vector<const Item*> chain{&start};
        std::unordered_map<std::string, std::size_t> position{{start.name(), 0}};
        std::size_t cycle_start = 0;
        bool cycle = false;
        for (const Item* current = &start;;) {
            if (resolved_.contains(current->name()) || !current->has_parent() ||
                !table_.contains(current->parent()))
                break;
            const Item& base = table_.get(current->parent());
            if (auto seen = position.find(base.name()); seen != position.end()) {
                cycle = true;
                cycle_start = seen->second;
                break;
            }
            position.emplace(base.name(), chain.size());
            chain.push_back(&base);
            current = &base;
        }
        // Items on a cycle stay as parsed and are reported in chain order; the items before
        // the cycle then resolve base first.
        const std::size_t resolvable = cycle ? cycle_start : chain.size();
        for (std::size_t i = resolvable; i < chain.size(); ++i) resolve_one(*chain[i], true);
        for (std::size_t i = resolvable; i-- > 0;) resolve_one(*chain[i], false);
        return resolved_.at(start.name());
    }

private:
    void resolve_one(const Item& item, bool on_cycle) {
        if (resolved_.contains(item.name())) return;
        if (!item.has_parent()) {
            resolved_.emplace(item.name(), item);
        } else if (!table_.contains(item.parent())) {
            report(diagnostics_, item, format_message(messages::like_undefined, {item.parent(), item.name()}));
            resolved_.emplace(item.name(), item);
        } else if (on_cycle) {
            report(diagnostics_, item, format_message(messages::like_cycle, {item.name()}));
            resolved_.emplace(item.name(), item);
        } else {
            resolved_.emplace(item.name(), merge(item, resolved_.at(item.parent())));
        }
    }

    const ItemTable& table_;
    Diagnostics& diagnostics_;
    std::unordered_map<std::string, Item> resolved_;
};

}  // namespace

Description resolve_like_items(const Description& parsed, Diagnostics& diagnostics) {
    Description result;
    result.identification = parsed.identification;
    Resolver resolver(parsed.items, diagnostics);
    for (const Item& item : parsed.items.items()) result.items.insert(item.has_parent() ? resolver.resolve(item) : item);
    return result;
}

Description resolve_like_items(Description&& parsed, Diagnostics& diagnostics) {
    // The LIKE items first, in table order (which is the order of the reports): they read
    // their bases from the parsed table. Then every item moves over.
    std::vector<Item> resolved;
    {
        Resolver resolver(parsed.items, diagnostics);
        for (const Item& item : parsed.items.items())
            if (item.has_parent()) resolved.push_back(resolver.resolve(item));
    }
    Description result;
    result.identification = std::move(parsed.identification);
    auto next_resolved = resolved.begin();
    for (Item& item : parsed.items.release())
        result.items.insert(item.has_parent() ? std::move(*next_resolved++) : std::move(item));
    return result;
}

}  // namespace edd
