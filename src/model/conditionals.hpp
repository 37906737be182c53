// SPDX-License-Identifier: Apache-2.0
// IF and SELECT values. Branches are values themselves, so conditionals nest to any depth.
// Copies differ on purpose: IF clones its parts, SELECT shares selector and default.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <string>
#include <vector>

#include "model/simple_value.hpp"
#include "model/value.hpp"

namespace edd {

class IfConditional final : public Value {
public:
    explicit IfConditional(Arena&) : Value(ValueKind::IF_CONDITIONAL) {}

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    // The branches only; keys used in the condition alone are not collected.
    void collect_dictionary_keys(KeySet& keys) const override;

    void set_condition(ValuePtr value) { condition_ = value; }
    void set_then(ValuePtr value) {
        take_keys_of(value);
        then_ = value;
    }
    void set_else(ValuePtr value) {
        take_keys_of(value);
        else_ = value;
    }
    const Value& condition() const { return *condition_; }
    const Value& then_value() const { return *then_; }
    const Value& else_value() const { return *else_; }
    bool has_else() const { return else_.is_set(); }

private:
    ValuePtr condition_ = null_value();
    ValuePtr then_ = null_value();
    ValuePtr else_;
};

class SelectConditional final : public Value {
public:
    class Case final : public Value {
    public:
        Case(Arena&, ValuePtr label, ValuePtr value) : Value(ValueKind::CASE), label_(label), value_(value) {
            take_keys_of(value);
        }

        ValuePtr clone(Arena& arena) const override;
        std::string to_string() const override { return std::string(); }
        // The branch only, never the label.
        void collect_dictionary_keys(KeySet& keys) const override { collect_keys(value_, keys); }

        const Value& label() const { return *label_; }
        const Value& value() const { return *value_; }
        const ValuePtr& label_ptr() const { return label_; }
        const ValuePtr& value_ptr() const { return value_; }

    private:
        ValuePtr label_;
        ValuePtr value_;
    };

    explicit SelectConditional(Arena& arena) : Value(ValueKind::SELECT_CONDITIONAL), cases_(arena.resource()) {}

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    void set_selector(ValuePtr value) { selector_ = value; }
    void add_case(Arena& arena, ValuePtr label, ValuePtr value) {
        take_keys_of(value);
        cases_.emplace_back(arena, label, value);
    }
    void set_default(ValuePtr value) {
        take_keys_of(value);
        default_ = value;
    }
    const Value& selector() const { return *selector_; }
    std::size_t case_count() const { return cases_.size(); }
    const Case& case_at(std::size_t index) const { return cases_.at(index); }
    const Value& default_value() const { return *default_; }
    bool has_default() const { return default_.is_set(); }

private:
    ValuePtr selector_ = null_value();
    std::pmr::vector<Case> cases_;
    ValuePtr default_;
};

}  // namespace edd
