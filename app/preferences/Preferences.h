#pragma once

#include "app/base/Observable.h"
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
/// keys mean stands in PreferenceKeys.h. Whoever depends on a setting is called when it changes
/// (`followSettings`), whoever changed it. Main thread only.
class Preferences : public Observable {
public:
    virtual std::optional<bool> boolean(std::string_view key) const = 0;
    virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    virtual std::optional<std::string> text(std::string_view key) const = 0;
    virtual std::optional<std::vector<std::string>> texts(std::string_view key) const = 0;
    virtual std::optional<Data> data(std::string_view key) const = 0;
    virtual std::optional<std::map<std::string, Data>> dataTable(std::string_view key) const = 0;

    /// Stores what the user decided. False when it could not be stored, and `problem` says why:
    /// then the key keeps what it had, since what the user was refused must not be stored later,
    /// along with another change.
    bool set(std::string_view key, PreferenceValue value) {
        noteChange();
        return storeOrRefuse(key, std::move(value));
    }
    /// Stores what the program notes for itself. False when it could not be stored: then it is
    /// what reads return until the program ends, and it is stored along with the next change.
    bool note(std::string_view key, PreferenceValue value) {
        noteChange();
        return storeOrKeep(key, std::move(value));
    }
    /// As `note`.
    bool remove(std::string_view key) {
        noteChange();
        return removeOrForget(key);
    }

    /// Opened to be read: nothing is ever stored.
    virtual bool isReadOnly() const { return false; }
    /// There were settings, and none of them could be read: what the user had decided is unknown.
    /// This is stored, and holds until the key `preference::settingsLost` is removed.
    virtual bool isLost() const { return false; }
    /// What the user must know of the store, as a sentence: it was damaged and set aside when it
    /// was opened, or can't be written at present.
    virtual std::optional<std::string> problem() const { return std::nullopt; }
    /// False when a change could not be stored, until a later one was.
    virtual bool isStored() const { return true; }

private:
    /// As `set`, `note` and `remove`, which announce the change as well.
    virtual bool storeOrRefuse(std::string_view key, PreferenceValue value) = 0;
    virtual bool storeOrKeep(std::string_view key, PreferenceValue value) = 0;
    virtual bool removeOrForget(std::string_view key) = 0;
};

} // namespace tidemark
