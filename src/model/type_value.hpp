// A variable or waveform type (TYPE INTEGER (4) { ... }): name, size, named attributes ordered by
// name, and further values. Copies clone the attributes but share the further values.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/attribute.hpp"
#include "model/value.hpp"

namespace edd {

class TypeValue final : public ValueOf<TypeValue, ValueKind::TYPE> {
public:
    explicit TypeValue(std::string name = "UNKNOWN", std::uint32_t size = 0) : name_(std::move(name)), size_(size) {}

    bool equals(const Value& other) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    const std::string& name() const { return name_; }
    std::uint32_t size() const { return size_; }
    void set_size(std::uint32_t size) { size_ = size; }
    // Replaces an earlier attribute of the same name.
    void set_attribute(const Attribute& attribute);
    void set_attribute(Attribute&& attribute);
    // An absent name throws std::logic_error.
    const ValuePtr& get_attribute(std::string_view name) const;
    std::vector<Attribute> attributes() const;
    const std::map<std::string, Attribute, std::less<>>& attribute_map() const { return attributes_; }
    void add_value(ValuePtr value) { values_.push_back(take_or_clone(std::move(value))); }
    const std::vector<ValuePtr>& values() const { return values_; }

private:
    std::string name_;
    std::uint32_t size_;
    std::map<std::string, Attribute, std::less<>> attributes_;
    std::vector<ValuePtr> values_;
};

}  // namespace edd
