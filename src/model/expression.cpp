#include "model/expression.hpp"

namespace edd {

Expression::Expression(ValuePtr a, ValuePtr b)
    : parts_{take_or_clone(std::move(a)), take_or_clone(std::move(b))} {}

Expression::Expression(ValuePtr a, ValuePtr b, ValuePtr c)
    : parts_{take_or_clone(std::move(a)), take_or_clone(std::move(b)), take_or_clone(std::move(c))} {}

Expression::Expression(ValuePtr a, ValuePtr b, ValuePtr c, ValuePtr d, ValuePtr e)
    : parts_{take_or_clone(std::move(a)), take_or_clone(std::move(b)), take_or_clone(std::move(c)),
             take_or_clone(std::move(d)), take_or_clone(std::move(e))} {}

Expression::Expression(const Expression& other) : ValueOf(other) {
    parts_.reserve(other.parts_.size());
    for (const ValuePtr& part : other.parts_) parts_.push_back(clone_of(part));
}

std::string Expression::to_string() const {
    std::string text;
    for (const ValuePtr& part : parts_) {
        text += part->to_string();
        text += ' ';
    }
    return text;
}

void Expression::collect_dictionary_keys(KeySet& keys) const {
    for (const ValuePtr& part : parts_) part->collect_dictionary_keys(keys);
}

}  // namespace edd
