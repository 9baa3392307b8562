#pragma once

#include <memory>
#include <utility>

namespace tidemark {

/// True for a collection whose values repeat in snapshot after snapshot, so that `InternPool` keeps
/// each once. Specialised per type.
template <class T>
inline constexpr bool collectionRecurs = false;

/// An immutable value that copies share by a pointer, so that copying a record does not copy the
/// texts in its shared values. Never empty. Equality compares the pointers first, then the values.
///
/// There are no implicit conversions: a value has to be moved in, and is read by `*` or `->`, so
/// that copying a map with thousands of names can't happen unnoticed.
template <class T>
class Shared {
public:
    Shared() : pointer(defaultValue()) {}
    explicit Shared(T&& value) : pointer(std::make_shared<const T>(std::move(value))) {}
    /// Shares an existing value; `shared` must not be null.
    explicit Shared(std::shared_ptr<const T> shared) : pointer(std::move(shared)) {}

    /// Replaces the value here; others that share the old one keep it.
    void emplace(T&& value) { *this = Shared(std::move(value)); }

    const T& operator*() const { return *pointer; }
    const T* operator->() const { return pointer.get(); }

    const std::shared_ptr<const T>& object() const { return pointer; }
    /// True when no value was assigned since it was default-constructed.
    bool isDefault() const { return pointer == defaultValue(); }
    /// True when both are one object in memory, which implies equality.
    bool sameObject(const Shared& other) const { return pointer == other.pointer; }
    friend bool operator==(const Shared& a, const Shared& b) {
        return a.pointer == b.pointer || *a.pointer == *b.pointer;
    }
    friend bool operator==(const Shared& a, const T& b) { return *a.pointer == b; }

private:
    static const std::shared_ptr<const T>& defaultValue() {
        // Never destroyed: another thread may still use it when the process ends.
        static const auto& value = *new std::shared_ptr<const T>(std::make_shared<const T>());
        return value;
    }

    std::shared_ptr<const T> pointer;
};

/// A `Shared` that may be empty: an optional that takes one pointer when it is absent.
template <class T>
class OptionalShared {
public:
    OptionalShared() = default;
    explicit OptionalShared(T&& value) : pointer(std::make_shared<const T>(std::move(value))) {}
    explicit OptionalShared(std::shared_ptr<const T> shared) : pointer(std::move(shared)) {}
    OptionalShared(const Shared<T>& shared) : pointer(shared.object()) {}

    void emplace(T&& value) { *this = OptionalShared(std::move(value)); }
    void reset() { pointer.reset(); }

    bool has_value() const { return pointer != nullptr; }
    explicit operator bool() const { return has_value(); }
    const T& operator*() const { return *pointer; }
    const T* operator->() const { return pointer.get(); }
    /// Shares the value; must not be empty.
    Shared<T> value() const { return Shared<T>(pointer); }

    const std::shared_ptr<const T>& object() const { return pointer; }
    friend bool operator==(const OptionalShared& a, const OptionalShared& b) {
        if (a.pointer == b.pointer)
            return true;
        return a.pointer && b.pointer && *a.pointer == *b.pointer;
    }
    friend bool operator==(const OptionalShared& a, const T& b) {
        return a.pointer && *a.pointer == b;
    }

private:
    std::shared_ptr<const T> pointer;
};

} // namespace tidemark
