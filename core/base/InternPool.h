#pragma once

#include "core/base/Data.h"
#include "core/base/Date.h"
#include "core/base/JsonFields.h"
#include "core/base/RecordHash.h"
#include "core/base/Shared.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tidemark {

template <>
inline constexpr bool collectionRecurs<std::map<std::string, std::int64_t>> = true;
template <>
inline constexpr bool collectionRecurs<std::set<std::string>> = true;

/// A type whose values repeat in snapshot after snapshot. A record declares it with `static
/// constexpr bool recurs = true`; reading a document then keeps each distinct value once.
template <class T>
concept Recurring = collectionRecurs<T> || (json::Described<T> && requires { requires T::recurs; });

/// Replaces equal values by one shared object. Each snapshot of a journal holds the same few
/// hundred applications; with the pool they are in memory once.
class InternPool {
public:
    /// Call it for the shared parts of a value before the value itself.
    template <Recurring T>
    void unify(Shared<T>& value) {
        const auto& one = table<T>().insert(recordHash::of(*value), value.object());
        if (one != value.object())
            value = Shared<T>(one);
    }
    template <Recurring T>
    void unify(OptionalShared<T>& value) {
        if (!value)
            return;
        Shared<T> whole = value.value();
        unify(whole);
        value = whole;
    }

private:
    /// A hash set with open addressing: loading a history takes some hundred thousand look-ups, and
    /// with `std::unordered_set`, which follows pointers, these are a tenth of the whole time.
    template <class T>
    class Table {
    public:
        using Pointer = std::shared_ptr<const T>;

        /// The value in the set that equals `value`; if there is none, adds `value` and returns it.
        const Pointer& insert(std::size_t hash, const Pointer& value) {
            if (used * 2 >= slots.size())
                grow();
            std::size_t index = home(hash);
            for (; slots[index].value; index = next(index))
                if (slots[index].hash == hash && *slots[index].value == *value)
                    return slots[index].value;
            ++used;
            slots[index] = {hash, value};
            return slots[index].value;
        }

    private:
        struct Slot {
            std::size_t hash = 0;
            Pointer value;
        };

        /// The slot where the search begins. It is taken from the upper bits of a product, because
        /// the hashes may differ in their upper bits only.
        std::size_t home(std::size_t hash) const {
            return (hash * 0x9e3779b97f4a7c15U) >> (64 - std::bit_width(slots.size() - 1));
        }
        std::size_t next(std::size_t index) const { return (index + 1) & (slots.size() - 1); }

        void grow() {
            auto old = std::exchange(
                slots, std::vector<Slot>(std::max<std::size_t>(64, slots.size() * 2)));
            for (Slot& slot : old) {
                if (!slot.value)
                    continue;
                std::size_t index = home(slot.hash);
                while (slots[index].value)
                    index = next(index);
                slots[index] = std::move(slot);
            }
        }

        /// The number of slots is a power of two.
        std::vector<Slot> slots;
        std::size_t used = 0;
    };

    template <class T>
    Table<T>& table() {
        auto& slot = tables[&tableKey<T>];
        if (!slot)
            slot = std::make_shared<Table<T>>();
        return *static_cast<Table<T>*>(slot.get());
    }

    /// Its address identifies the type; looking it up is far quicker than with a `type_index`.
    template <class T>
    static constexpr char tableKey = 0;

    std::unordered_map<const void*, std::shared_ptr<void>> tables;
};

} // namespace tidemark
