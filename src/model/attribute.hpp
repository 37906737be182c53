// A named value, and the ordered list of them that composed values carry. Copying an
// attribute clones its value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/value.hpp"

namespace edd {

class Attribute {
public:
    Attribute();
    Attribute(std::string name, ValuePtr value);
    Attribute(std::string name, const Value& value) : name_(std::move(name)), value_(value.clone()) {}
    Attribute(const Attribute& other);
    Attribute& operator=(const Attribute& other);
    Attribute(Attribute&&) noexcept = default;
    Attribute& operator=(Attribute&&) noexcept = default;
    virtual ~Attribute() = default;

    const std::string& name() const { return name_; }
    const ValuePtr& value() const { return value_; }
    // Nothing sets these: they read as empty and 0, and take no room in the many attributes.
    const std::string& extra_text() const;
    std::uint32_t extra_number() const { return 0; }

    friend bool operator==(const Attribute& a, const Attribute& b) {
        return a.name_ == b.name_ && *a.value_ == *b.value_;
    }

private:
    std::string name_ = "NULL";
    ValuePtr value_;
};

// Attributes in insertion order, at most one per name when filled through set().
class AttributeList {
public:
    void set(std::string name, ValuePtr value) { set(Attribute(std::move(name), std::move(value))); }
    // Replaces the first entry of the same name in place, else appends.
    void set(const Attribute& attribute);
    void set(Attribute&& attribute);
    // Absent names throw std::invalid_argument.
    const Attribute& get(std::string_view name) const;
    const ValuePtr& value(std::string_view name) const { return get(name).value(); }
    void remove(std::string_view name);
    bool contains(std::string_view name) const;
    const std::vector<Attribute>& all() const { return entries_; }
    bool empty() const { return entries_.empty(); }

private:
    std::vector<Attribute> entries_;
};

}  // namespace edd
