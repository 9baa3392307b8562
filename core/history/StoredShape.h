#pragma once

#include "core/base/JsonFields.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The structure of the JSON of one type and the privacy of its parts, derived from the fields of
/// records. A record or variant has known keys. A map has arbitrary keys; all elements of a map or
/// an array have the same shape.
struct StoredShape {
    using Of = const StoredShape& (*)();

    struct Key {
        std::string_view name;
        json::Privacy privacy;
        Of shape;
    };

    /// Empty unless the value is a record or a variant.
    std::vector<Key> keys;
    /// Null unless the value is a map, an array or a set.
    Of element = nullptr;

    /// Null for a key that no field describes.
    const Key* find(std::string_view name) const {
        for (const Key& key : keys)
            if (key.name == name)
                return &key;
        return nullptr;
    }
};

template <class T>
const StoredShape& storedShapeOf();

namespace detail {

/// The shape of a text, a number or an enumeration.
template <class T>
struct ShapeOf {
    static StoredShape make() { return {}; }
};
template <json::Described T>
struct ShapeOf<T> {
    static StoredShape make() {
        StoredShape shape;
        const auto add = [&]<class Field>(const Field& field) {
            shape.keys.push_back(
                {field.name, field.privacy, &storedShapeOf<typename Field::Member>});
        };
        std::apply([&](const auto&... field) { (add(field), ...); }, json::fieldsOf<T>());
        return shape;
    }
};
template <class... Cases>
struct ShapeOf<std::variant<Cases...>> {
    static StoredShape make() {
        return {{{Cases::tag, json::Privacy::Shown, &storedShapeOf<Cases>}...}};
    }
};
template <class T>
struct ShapeOf<std::vector<T>> {
    static StoredShape make() { return {{}, &storedShapeOf<T>}; }
};
template <class T>
struct ShapeOf<std::set<T>> : ShapeOf<std::vector<T>> {};
template <class T>
struct ShapeOf<std::map<std::string, T>> : ShapeOf<std::vector<T>> {};
template <class T>
struct ShapeOf<std::optional<T>> : ShapeOf<T> {};
template <class T>
struct ShapeOf<Shared<T>> : ShapeOf<T> {};
template <class T>
struct ShapeOf<OptionalShared<T>> : ShapeOf<T> {};

} // namespace detail

template <class T>
const StoredShape& storedShapeOf() {
    // Never destroyed: another thread may still use it when the process ends.
    static const StoredShape& shape = *new StoredShape(detail::ShapeOf<T>::make());
    return shape;
}

} // namespace tidemark
