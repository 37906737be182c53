// SPDX-License-Identifier: Apache-2.0
// What the checks look at, gathered once by the checker, and the three groups of checks.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "checker/findings.hpp"
#include "model/description.hpp"
#include "model/dictionary.hpp"
#include "parser/parse_observer.hpp"

namespace edd {

// The parser's positions of the references, keys and strings it read.
class PositionRecorder final : public ParseObserver {
public:
    void value_read(const Value& value, Position where) override { positions_.emplace(&value, where); }
    // The value's position, or `otherwise` for a value the parser did not report.
    Position of(const Value& value, Position otherwise) const {
        const auto found = positions_.find(&value);
        return found == positions_.end() ? otherwise : found->second;
    }

private:
    std::unordered_map<const Value*, Position> positions_;
};

struct CheckContext {
    // As parsed, LIKE items unresolved: every value stands once, where it was written.
    const ItemTable& parsed;
    // The same items with LIKE resolved, in the same order: the types and members that
    // references find.
    const ItemTable& resolved;
    const PositionRecorder& positions;
    const Dictionary* dictionary;            // null when no -d file was given
    std::string input_file;

    const Item& resolved_of(const Item& parsed_item) const {
        return resolved.items()[static_cast<std::size_t>(&parsed_item - parsed.items().data())];
    }
};

// Undefined references and members, wrong item types, top menus, unreferenced items.
void check_references(const CheckContext& context, Findings& findings);
// Dictionary keys without text, texts without a language.
void check_texts(const CheckContext& context, Findings& findings);
// Image files that cannot be opened or lie outside the description's directories.
void check_images(const CheckContext& context, Findings& findings);
// Description files the lexer stops reading early; they need no parse.
void check_sources(const std::vector<std::string>& sources, Findings& findings);

}  // namespace edd
