#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"
#include "core/base/Shared.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

namespace tidemark {

/// A hash of all stored fields. Values of one `InternPool` that are stored as the same bytes have
/// equal hashes.
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
/// By bits: 0 and −0 compare equal, but are stored as different texts.
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
/// By address: `unify` is called for the parts of a value first, so equal parts are one object.
template <class T>
struct Hash<Shared<T>> {
    std::size_t operator()(const Shared<T>& value) const { return of(value.object().get()); }
};
template <class T>
struct Hash<OptionalShared<T>> {
    std::size_t operator()(const OptionalShared<T>& value) const {
        return of(value.object().get());
    }
};
template <class T>
struct Hash<std::vector<T>> {
    std::size_t operator()(const std::vector<T>& values) const {
        std::size_t hash = values.size();
        for (const auto& value : values)
            mix(hash, of(value));
        return hash;
    }
};
template <class T>
struct Hash<std::set<T>> {
    std::size_t operator()(const std::set<T>& set) const {
        std::size_t hash = set.size();
        for (const auto& value : set)
            mix(hash, of(value));
        return hash;
    }
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

} // namespace tidemark
