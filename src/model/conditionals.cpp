// SPDX-License-Identifier: Apache-2.0
#include "model/conditionals.hpp"

namespace edd {

ValuePtr IfConditional::clone(Arena& arena) const {
    auto* copy = arena.make<IfConditional>();
    copy->set_condition(clone_of(condition_, arena));
    copy->set_then(clone_of(then_, arena));
    if (has_else()) copy->set_else(clone_of(else_, arena));
    return copy;
}

std::string IfConditional::to_string() const {
    std::string text = "IF (" + condition_->to_string() + ") {\n    " + then_->to_string() + "\n}";
    if (has_else()) text += "ELSE {\n    " + else_->to_string() + "\n}";
    return text;
}

void IfConditional::collect_dictionary_keys(KeySet& keys) const {
    collect_keys(then_, keys);
    collect_keys(else_, keys);
}

ValuePtr SelectConditional::Case::clone(Arena& arena) const {
    return arena.make<Case>(clone_of(label_, arena), clone_of(value_, arena));
}

// Selector and default are shared with the original; each case is rebuilt, which clones
// its label and value.
ValuePtr SelectConditional::clone(Arena& arena) const {
    auto* copy = arena.make<SelectConditional>();
    copy->selector_ = selector_;
    if (has_default()) copy->set_default(default_);
    for (const Case& c : cases_) copy->add_case(arena, clone_of(c.label_ptr(), arena), clone_of(c.value_ptr(), arena));
    return copy;
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
    collect_keys(default_, keys);
}

}  // namespace edd
