// A reference to another item by name, with an optional argument (an index, say). Copies
// share the argument.
#pragma once

#include <string>

#include "model/value.hpp"

namespace edd {

class ReferenceValue final : public ValueOf<ReferenceValue, ValueKind::REFERENCE> {
public:
    explicit ReferenceValue(std::string name) : name_(std::move(name)) {}

    bool equals(const Value&) const override { return false; }
    std::string to_string() const override;

    const std::string& name() const { return name_; }
    void set_argument(ValuePtr value) { argument_ = take_or_clone(std::move(value)); }
    bool has_argument() const { return argument_.is_set(); }
    const ValuePtr& argument() const { return argument_; }

private:
    std::string name_;
    ValuePtr argument_;
};

}  // namespace edd
