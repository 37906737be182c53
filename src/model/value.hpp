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
// Setters that take a ValuePtr by value store a clone unless they were handed the only
// handle (see take_or_clone): passing a named handle keeps it independent of the copy.
class ValuePtr {
public:
    ValuePtr() = default;
    explicit ValuePtr(std::shared_ptr<Value> value) : value_(std::move(value)) {}

    // Set: made from a value (even a null one); a default handle is unset.
    bool is_set() const { return value_.use_count() != 0; }
    // True when this handle holds a value and is its only owner.
    bool is_sole_owner() const { return value_ && value_.use_count() == 1; }
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

    const std::string& note_text() const;
    std::uint32_t note_number() const { return notes_ ? notes_->number : 0; }

    friend bool operator==(const Value& a, const Value& b) { return a.equals(b); }

protected:
    Value() = default;
    Value(std::string note_text, std::uint32_t note_number)
        : notes_(std::make_unique<Notes>(Notes{std::move(note_text), note_number})) {}
    Value(const Value& other) : notes_(other.notes_ ? std::make_unique<Notes>(*other.notes_) : nullptr) {}
    Value& operator=(const Value& other) {
        if (this != &other) notes_ = other.notes_ ? std::make_unique<Notes>(*other.notes_) : nullptr;
        return *this;
    }

private:
    // Held apart and only when given: the model holds many values, few with notes.
    struct Notes {
        std::string text;
        std::uint32_t number;
    };
    std::unique_ptr<Notes> notes_;
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

// What a setter stores: the value itself when the handle it was given is its only owner (a
// fresh result handed over, which no one else can see), else a clone as clone_of makes.
inline ValuePtr take_or_clone(ValuePtr value) { return value.is_sole_owner() ? std::move(value) : clone_of(value); }

}  // namespace edd
