// The root of the model's value family and the counted handle through which every value
// is held. Setters throughout the model store clones, never the caller's object.
#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <set>
#include <string>

#include "diagnostics/exceptions.hpp"
#include "model/value_kind.hpp"

namespace edd {

class Value;

// Dictionary keys in byte order, as the document lists them.
using KeySet = std::set<std::string>;

// A shared handle to a value. Following a handle that holds no value throws NullPointer.
class ValuePtr {
public:
    ValuePtr() = default;
    explicit ValuePtr(std::shared_ptr<Value> value) : value_(std::move(value)) {}

    // Set: made from a value (even a null one); a default handle is unset.
    bool is_set() const { return value_.use_count() != 0; }
    Value* get() const { return value_.get(); }
    Value& operator*() const { return checked(); }
    Value* operator->() const { return &checked(); }

private:
    Value& checked() const {
        if (!value_) throw NullPointer();
        return *value_;
    }
    std::shared_ptr<Value> value_;
};

template <class V, class... Args>
ValuePtr make_value(Args&&... args) {
    return ValuePtr(std::make_shared<V>(std::forward<Args>(args)...));
}

class Value {
public:
    virtual ~Value() = default;
    virtual ValueKind kind() const = 0;
    // A fresh copy; what it shares with the original is each class's own rule.
    virtual ValuePtr clone() const = 0;
    virtual bool equals(const Value& other) const = 0;
    // EDDL-like source text.
    virtual std::string to_string() const = 0;
    virtual void collect_dictionary_keys(KeySet& keys) const;

    const std::string& note_text() const { return note_text_; }
    std::uint32_t note_number() const { return note_number_; }

    friend bool operator==(const Value& a, const Value& b) { return a.equals(b); }

protected:
    Value() = default;
    Value(std::string note_text, std::uint32_t note_number)
        : note_text_(std::move(note_text)), note_number_(note_number) {}
    Value(const Value&) = default;
    Value& operator=(const Value&) = default;

private:
    std::string note_text_;
    std::uint32_t note_number_ = 0;
};

std::ostream& operator<<(std::ostream& out, const Value& value);

// kind() and clone() written once for the classes whose kind is fixed.
template <class Derived, ValueKind K>
class ValueOf : public Value {
public:
    static constexpr ValueKind static_kind = K;
    ValueKind kind() const final { return K; }
    ValuePtr clone() const final { return make_value<Derived>(static_cast<const Derived&>(*this)); }

protected:
    using Value::Value;
};

// Handles the clone of a value, or a NullPointer for an unset handle.
inline ValuePtr clone_of(const ValuePtr& value) { return value->clone(); }

}  // namespace edd
