// An ordered list of values, optionally named. Copies clone the items; equality asks for
// the very same item objects, so two separately built lists never compare equal.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "model/value.hpp"

namespace edd {

class ValueList final : public ValueOf<ValueList, ValueKind::VALUE_LIST> {
public:
    ValueList() = default;
    explicit ValueList(std::string name) : name_(std::move(name)) {}
    ValueList(const ValueList& other);
    ValueList& operator=(const ValueList&) = delete;

    bool equals(const Value& other) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;
    void print_to(std::ostream& out) const;

    std::string& name() { return name_; }
    const std::string& name() const { return name_; }
    void add(const Value& value) { items_.push_back(value.clone()); }
    void add(ValuePtr value) { items_.push_back(take_or_clone(std::move(value))); }
    std::size_t size() const { return items_.size(); }
    bool empty() const { return items_.empty(); }
    // Index errors throw std::invalid_argument; last() of an empty list is one too.
    const ValuePtr& get(std::size_t index) const;
    const ValuePtr& last() const { return get(items_.size() - 1); }
    void set(std::size_t index, ValuePtr value);
    void set_last(ValuePtr value) { set(items_.size() - 1, std::move(value)); }
    const std::vector<ValuePtr>& items() const { return items_; }

private:
    std::string name_;
    std::vector<ValuePtr> items_;
};

}  // namespace edd
