#include "model/expression.hpp"

namespace edd {

Expression::Expression(const ValuePtr& a, const ValuePtr& b) : parts_{clone_of(a), clone_of(b)} {}

Expression::Expression(const ValuePtr& a, const ValuePtr& b, const ValuePtr& c)
    : parts_{clone_of(a), clone_of(b), clone_of(c)} {}

Expression::Expression(const ValuePtr& a, const ValuePtr& b, const ValuePtr& c, const ValuePtr& d,
                       const ValuePtr& e)
    : parts_{clone_of(a), clone_of(b), clone_of(c), clone_of(d), clone_of(e)} {}

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
