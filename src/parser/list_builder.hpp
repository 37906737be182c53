// SPDX-License-Identifier: Apache-2.0
// Collects the entries of a list as they are read and makes the list once it is complete,
// with room for exactly its entries. Lists nest, so the entries wait on one stack of the
// parser's, the innermost list's last.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "model/value_list.hpp"
#include "parser/parser.hpp"

namespace edd {

class Parser::ListBuilder {
public:
    explicit ListBuilder(Parser& parser) : parser_(parser), start_(parser.list_entries_.size()) {}
    ~ListBuilder() { parser_.list_entries_.resize(start_); }
    ListBuilder(const ListBuilder&) = delete;
    ListBuilder& operator=(const ListBuilder&) = delete;

    void add(ValuePtr entry) { parser_.list_entries_.push_back(entry); }
    ValueList* finish(std::string_view name = {}) {
        return parser_.make<ValueList>(name, std::span<const ValuePtr>(parser_.list_entries_).subspan(start_));
    }

private:
    Parser& parser_;
    std::size_t start_;
};

}  // namespace edd
