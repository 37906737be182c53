// A structured list entry whose fields are named attributes (an ELEMENTS entry, a menu
// item with qualifiers, ...). It never compares equal to anything.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/attribute.hpp"
#include "model/value.hpp"

namespace edd {

class ComposedValue final : public ValueOf<ComposedValue, ValueKind::COMPOSED> {
public:
    explicit ComposedValue(std::string name = std::string()) : name_(std::move(name)) {}

    bool equals(const Value&) const override { return false; }
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    const std::string& name() const { return name_; }
    bool has_attributes() const { return !attributes_.empty(); }
    void set(std::string name, ValuePtr value) { attributes_.set(std::move(name), std::move(value)); }
    void set(const Attribute& attribute) { attributes_.set(attribute); }
    void set(Attribute&& attribute) { attributes_.set(std::move(attribute)); }
    const Attribute& get(std::string_view name) const { return attributes_.get(name); }
    const ValuePtr& value(std::string_view name) const { return attributes_.value(name); }
    void remove(std::string_view name) { attributes_.remove(name); }
    bool contains(std::string_view name) const { return attributes_.contains(name); }
    const std::vector<Attribute>& attributes() const { return attributes_.all(); }

private:
    std::string name_;
    AttributeList attributes_;
};

}  // namespace edd
