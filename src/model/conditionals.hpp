// IF and SELECT values. Branches are values themselves, so conditionals nest to any depth.
// Copies differ on purpose: IF clones its parts, SELECT shares selector and default.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/value.hpp"

namespace edd {

class IfConditional final : public ValueOf<IfConditional, ValueKind::IF_CONDITIONAL> {
public:
    IfConditional();
    IfConditional(const IfConditional& other);
    IfConditional& operator=(const IfConditional&) = delete;

    // Comparing with an IF that lacks a part throws NullPointer, missing ELSE included.
    bool equals(const Value& other) const override;
    std::string to_string() const override;
    // The branches only; keys used in the condition alone are not collected.
    void collect_dictionary_keys(KeySet& keys) const override;

    void set_condition(ValuePtr value) { condition_ = take_or_clone(std::move(value)); }
    void set_then(ValuePtr value) { then_ = take_or_clone(std::move(value)); }
    void set_else(ValuePtr value) { else_ = take_or_clone(std::move(value)); }
    const Value& condition() const { return *condition_; }
    const Value& then_value() const { return *then_; }
    const Value& else_value() const { return *else_; }
    bool has_else() const { return else_.is_set(); }

private:
    ValuePtr condition_;
    ValuePtr then_;
    ValuePtr else_;
};

class SelectConditional final : public ValueOf<SelectConditional, ValueKind::SELECT_CONDITIONAL> {
public:
    class Case final : public ValueOf<Case, ValueKind::CASE> {
    public:
        Case() = default;
        Case(ValuePtr label, ValuePtr value)
            : label_(take_or_clone(std::move(label))), value_(take_or_clone(std::move(value))) {}

        bool equals(const Value&) const override { return false; }
        std::string to_string() const override { return std::string(); }
        // The branch only, never the label.
        void collect_dictionary_keys(KeySet& keys) const override;

        const Value& label() const { return *label_; }
        const Value& value() const { return *value_; }
        const ValuePtr& label_ptr() const { return label_; }
        const ValuePtr& value_ptr() const { return value_; }

    private:
        ValuePtr label_;
        ValuePtr value_;
    };

    SelectConditional();
    SelectConditional(const SelectConditional& other);
    SelectConditional& operator=(const SelectConditional&) = delete;

    // Never equal, not even to itself.
    bool equals(const Value&) const override { return false; }
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    void set_selector(ValuePtr value) { selector_ = take_or_clone(std::move(value)); }
    void add_case(ValuePtr label, ValuePtr value) { cases_.emplace_back(std::move(label), std::move(value)); }
    void set_default(ValuePtr value) { default_ = take_or_clone(std::move(value)); }
    const Value& selector() const { return *selector_; }
    std::size_t case_count() const { return cases_.size(); }
    const Case& case_at(std::size_t index) const { return cases_.at(index); }
    const Value& default_value() const { return *default_; }
    bool has_default() const { return default_.is_set(); }

private:
    ValuePtr selector_;
    std::vector<Case> cases_;
    ValuePtr default_;
};

}  // namespace edd
