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
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
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

/// Keeps one object of each distinct value while a document is read: each snapshot of a journal
/// holds the same few hundred applications and folders, and with the pool they are in memory once.
///
/// The pool also recognises a value by its text before it is parsed (`recall`). Most of a journal
/// is text that the snapshot before has, too, and comparing it is many times faster than parsing
/// it.
class InternPool {
public:
    /// Replaces `value` by the equal one that was read before, if there is one. `text` is the whole
    /// JSON text of the value and must outlive the pool; empty where it is not known. Call it for
    /// the shared parts of a value before the value itself.
    template <Recurring T>
    void unify(Shared<T>& value, std::string_view text) {
        const auto& one = table<T>().insert(recordHash::of(*value), value.object(), text);
        if (one != value.object())
            value = Shared<T>(one);
    }
    template <Recurring T>
    void unify(OptionalShared<T>& value, std::string_view text) {
        if (!value)
            return;
        Shared<T> whole = value.value();
        unify(whole, text);
        value = whole;
    }

    /// A value that was read before, and the number of bytes of its JSON text. `value` is null and
    /// `length` 0 where none was found.
    template <class T>
    struct Recalled {
        std::shared_ptr<const T> value;
        std::size_t length = 0;
    };
    /// Finds a value that was read before and whose JSON text is at the beginning of `text`.
    /// Compares with two known values only, so a value that is not found may have been read before.
    template <Recurring T>
    Recalled<T> recall(std::string_view text) {
        return table<T>().recall(text);
    }

private:
    /// The values of one type, in the order in which they were first read, and a hash set of their
    /// indices with open addressing: loading a history takes some hundred thousand look-ups, and
    /// with `std::unordered_set`, which follows pointers, these are a tenth of the whole time.
    template <class T>
    class Table {
    public:
        using Pointer = std::shared_ptr<const T>;

        /// The known value that equals `value`; if there is none, adds `value` and returns it.
        const Pointer& insert(std::size_t hash, const Pointer& value, std::string_view text) {
            if (known.size() * 2 >= slots.size())
                grow();
            std::size_t position = home(hash);
            for (; slots[position].index != none; position = next(position))
                if (slots[position].hash == hash && *known[slots[position].index].value == *value)
                    break;
            if (slots[position].index == none) {
                slots[position] = {hash, static_cast<Index>(known.size())};
                known.push_back({value, {}, none});
            }
            Known& one = known[slots[position].index];
            one.text = text;
            follow(slots[position].index);
            return one.value;
        }

        /// Compares the beginning of `text` with the texts of two values: the value read last, and
        /// the one that followed it the last time. Snapshots hold mostly the same values in the
        /// same order, so it is usually one of these. Any other value is parsed and passed to
        /// `insert`, and the next call compares with that value and the one that followed it.
        Recalled<T> recall(std::string_view text) {
            if (last == none)
                return {};
            for (const Index index : {last, known[last].following}) {
                if (index == none || known[index].text.empty()
                    || !text.starts_with(known[index].text))
                    continue;
                follow(index);
                return {known[index].value, known[index].text.size()};
            }
            return {};
        }

    private:
        using Index = std::uint32_t;
        static constexpr Index none = std::numeric_limits<Index>::max();

        struct Known {
            Pointer value;
            std::string_view text;
            /// The value that was read after this one, the last time.
            Index following = none;
        };
        struct Slot {
            std::size_t hash = 0;
            Index index = none;
        };

        void follow(Index index) {
            if (last != none && last != index)
                known[last].following = index;
            last = index;
        }

        /// The slot where the search begins. It is taken from the upper bits of a product, because
        /// the hashes may differ in their upper bits only.
        std::size_t home(std::size_t hash) const {
            return (hash * 0x9e3779b97f4a7c15U) >> (64 - std::bit_width(slots.size() - 1));
        }
        std::size_t next(std::size_t position) const { return (position + 1) & (slots.size() - 1); }

        void grow() {
            const auto old = std::exchange(
                slots, std::vector<Slot>(std::max<std::size_t>(64, slots.size() * 2)));
            for (const Slot& slot : old) {
                if (slot.index == none)
                    continue;
                std::size_t position = home(slot.hash);
                while (slots[position].index != none)
                    position = next(position);
                slots[position] = slot;
            }
        }

        std::vector<Known> known;
        /// The value read last.
        Index last = none;
        /// The number of slots is a power of two.
        std::vector<Slot> slots;
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
