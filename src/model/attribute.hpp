// A named value, and the ordered list of them that composed values carry. Copying an
// attribute clones its value.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/value.hpp"

namespace edd {

class Attribute {
public:
    Attribute();
    Attribute(std::string name, ValuePtr value);
    Attribute(std::string name, const Value& value);
    Attribute(const Attribute& other);
    Attribute& operator=(const Attribute& other);
    Attribute(Attribute&& other) noexcept;
    Attribute& operator=(Attribute&& other) noexcept;
    virtual ~Attribute() = default;

    const std::string& name() const { return *name_; }
    const ValuePtr& value() const { return value_; }
    // Nothing sets these: they read as empty and 0, and take no room in the many attributes.
    const std::string& extra_text() const;
    std::uint32_t extra_number() const { return 0; }

    friend bool operator==(const Attribute& a, const Attribute& b) {
        return a.name() == b.name() && *a.value_ == *b.value_;
    }

private:
    void set_name(std::string name);

    // The grammar's own names are held once for all attributes (see attribute.cpp) and
    // pointed to; any other name is held by the attribute itself.
    const std::string* name_;
    std::unique_ptr<std::string> own_name_;
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
