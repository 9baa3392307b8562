#pragma once

#include "core/base/Data.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tidemark {

using PreferenceValue = std::variant<bool, std::int64_t, std::string, std::vector<std::string>,
                                     Data, std::map<std::string, Data>>;

/// The settings of the user and the few facts that outlive a run: a flat store of typed values.
/// Reading never fails; a value of another type than the one asked for counts as absent. What the
/// keys mean stands in PreferenceKeys.h. Main thread only.
class Preferences {
public:
    virtual ~Preferences() = default;

    virtual std::optional<bool> boolean(std::string_view key) const = 0;
    virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    virtual std::optional<std::string> text(std::string_view key) const = 0;
    virtual std::optional<std::vector<std::string>> texts(std::string_view key) const = 0;
    virtual std::optional<Data> data(std::string_view key) const = 0;
    virtual std::optional<std::map<std::string, Data>> dataTable(std::string_view key) const = 0;

    /// The value is what reads give from now on. False when it could not be stored: then it lasts
    /// until the program ends, or until a later change is stored along with it, and `problem` says
    /// why. Both are true of `remove` as well.
    virtual bool set(std::string_view key, PreferenceValue value) = 0;
    virtual bool remove(std::string_view key) = 0;
    /// As `set`, but where the value can't be stored the key keeps what it had.
    virtual bool setOrKeep(std::string_view key, PreferenceValue value) = 0;

    /// Opened by who only looks: nothing is ever stored.
    virtual bool isReadOnly() const { return false; }
    /// What the user must know of the store, as a sentence: it was damaged and set aside when it
    /// was opened, or can't be written at present.
    virtual std::optional<std::string> problem() const { return std::nullopt; }
    /// False when a change could not be stored, until a later one was.
    virtual bool isStored() const { return true; }
};

} // namespace tidemark
