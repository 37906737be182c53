#include "model/conditionals.hpp"

#include "model/simple_value.hpp"

namespace edd {

IfConditional::IfConditional() : condition_(make_value<NullValue>()), then_(make_value<NullValue>()) {}

// The note fields are not carried over: a copy starts with defaults.
IfConditional::IfConditional(const IfConditional& other)
    : condition_(clone_of(other.condition_)), then_(clone_of(other.then_)) {
    if (other.has_else()) else_ = clone_of(other.else_);
}

bool IfConditional::equals(const Value& other) const {
    if (other.kind() != ValueKind::IF_CONDITIONAL) return false;
    const auto& that = static_cast<const IfConditional&>(other);
    auto pair_equal = [](const ValuePtr& mine, const ValuePtr& theirs) {
        const Value& b = *theirs;
        const Value& a = *mine;
        return a == b;
    };
    return pair_equal(condition_, that.condition_) && pair_equal(then_, that.then_) && pair_equal(else_, that.else_);
}

std::string IfConditional::to_string() const {
    std::string text = "IF (" + condition_->to_string() + ") {\n    " + then_->to_string() + "\n}";
    if (has_else()) text += "ELSE {\n    " + else_->to_string() + "\n}";
    return text;
}

void IfConditional::collect_dictionary_keys(KeySet& keys) const {
    if (then_.is_set()) then_->collect_dictionary_keys(keys);
    if (else_.is_set()) else_->collect_dictionary_keys(keys);
}

void SelectConditional::Case::collect_dictionary_keys(KeySet& keys) const {
    if (value_.is_set()) value_->collect_dictionary_keys(keys);
}

SelectConditional::SelectConditional() : selector_(make_value<NullValue>()) {}

// Selector and default are shared with the original; each case is rebuilt, which clones
// its label and value.
SelectConditional::SelectConditional(const SelectConditional& other)
    : selector_(other.selector_), default_(other.default_) {
    cases_.reserve(other.cases_.size());
    for (const Case& c : other.cases_) cases_.emplace_back(c.label_ptr(), c.value_ptr());
}

std::string SelectConditional::to_string() const {
    std::string text = "SELECT (" + selector_->to_string() + ") {\n";
    for (const Case& c : cases_) text += "    CASE " + c.label().to_string() + ":\n        " + c.value().to_string() + "\n";
    if (has_default()) text += "    DEFAULT:\n        " + default_->to_string() + "\n";
    text += "}\n";
    return text;
}

void SelectConditional::collect_dictionary_keys(KeySet& keys) const {
    for (const Case& c : cases_) c.collect_dictionary_keys(keys);
    if (default_.is_set()) default_->collect_dictionary_keys(keys);
}

}  // namespace edd
