#pragma once

#include "core/base/Data.h"
#include "core/base/Date.h"
#include "core/base/JsonFields.h"
#include "core/base/Shared.h"

#include <bit>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <typeindex>
#include <unordered_map>
#include <unordered_set>

namespace tidemark {

/// A record of which equal copies stand in snapshot after snapshot; it says so with
/// `static constexpr bool recurs = true`. Reading a document keeps one of each.
template <class T>
concept Recurring = json::Described<T> && requires { requires T::recurs; };

/// A hash of all stored fields, in step with `operator==`.
namespace recordHash {

template <class T>
std::size_t of(const T& value);

inline void mix(std::size_t& hash, std::size_t next) {
    hash ^= next + 0x9e3779b97f4a7c15U + (hash << 6) + (hash >> 2);
}

template <class T>
struct Hash {
    std::size_t operator()(const T& value) const {
        if constexpr (json::Described<T>) {
            std::size_t hash = 0;
            std::apply([&](const auto&... field) { (mix(hash, of(value.*field.member)), ...); },
                       json::fieldsOf<T>());
            return hash;
        } else {
            return std::hash<T>()(value);
        }
    }
};
/// By bits, since 0 and −0 are equal and yet must not replace each other.
template <>
struct Hash<double> {
    std::size_t operator()(double value) const {
        return std::hash<std::uint64_t>()(std::bit_cast<std::uint64_t>(value));
    }
};
template <>
struct Hash<Date> {
    std::size_t operator()(Date value) const { return of(value.secondsSince2001); }
};
template <class T>
struct Hash<std::optional<T>> {
    std::size_t operator()(const std::optional<T>& value) const { return value ? of(*value) : 1; }
};
template <class K, class V>
struct Hash<std::map<K, V>> {
    std::size_t operator()(const std::map<K, V>& map) const {
        std::size_t hash = map.size();
        for (const auto& [key, value] : map) {
            mix(hash, of(key));
            mix(hash, of(value));
        }
        return hash;
    }
};

template <class T>
std::size_t of(const T& value) {
    return Hash<T>()(value);
}

} // namespace recordHash

/// Replaces equal values by one shared object. A journal holds the same few hundred applications
/// in each of its snapshots: this is what keeps them in memory once.
class InternPool {
public:
    template <Recurring T>
    void unify(Shared<T>& value) {
        value = table<T>().insert({recordHash::of(*value), value}).first->value;
    }

private:
    template <class T>
    struct Entry {
        std::size_t hash;
        Shared<T> value;

        bool operator==(const Entry&) const = default;
    };
    struct StoredHash {
        template <class T>
        std::size_t operator()(const Entry<T>& entry) const {
            return entry.hash;
        }
    };
    template <class T>
    using Table = std::unordered_set<Entry<T>, StoredHash>;

    template <class T>
    Table<T>& table() {
        auto& slot = tables[typeid(T)];
        if (!slot)
            slot = std::make_shared<Table<T>>();
        return *static_cast<Table<T>*>(slot.get());
    }

    std::unordered_map<std::type_index, std::shared_ptr<void>> tables;
};

} // namespace tidemark
