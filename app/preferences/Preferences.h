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

/// The settings of the user and the few facts that the program remembers: a flat store of typed
/// values. Reading does not fail; a value of another type than the requested one counts as absent.
/// The keys are defined in PreferenceKeys.h. Objects that depend on a setting observe it with
/// `followSettings`. Main thread only.
class Preferences : public Observable {
public:
    virtual std::optional<bool> boolean(std::string_view key) const = 0;
    virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    virtual std::optional<std::string> text(std::string_view key) const = 0;
    virtual std::optional<std::vector<std::string>> texts(std::string_view key) const = 0;
    virtual std::optional<Data> data(std::string_view key) const = 0;
    virtual std::optional<std::map<std::string, Data>> dataTable(std::string_view key) const = 0;

    /// Stores a choice of the user. False when it could not be stored, see `problem`. The key keeps
    /// its old value then, so that a change that was refused is not stored later with another one.
    bool set(std::string_view key, PreferenceValue value) {
        noteChange();
        return storeOrRefuse(key, std::move(value));
    }
    /// Stores a fact for the program itself. False when it could not be stored. Reads return it
    /// nevertheless, and it is stored with the next change.
    bool note(std::string_view key, PreferenceValue value) {
        noteChange();
        return storeOrKeep(key, std::move(value));
    }
    /// Removes a key, like `note`.
    bool remove(std::string_view key) {
        noteChange();
        return removeOrForget(key);
    }

    /// True when the settings were opened for reading only, so that nothing can be stored.
    virtual bool isReadOnly() const { return false; }
    /// True when there were settings but none could be read, so that the choices of the user are
    /// not known. Stored until the key `preferenceKeys::settingsLost` is removed.
    virtual bool isLost() const { return false; }
    /// A problem to report to the user, as a sentence: the file could not be read, was damaged, or
    /// can't be written at present.
    virtual std::optional<std::string> problem() const { return std::nullopt; }
    /// False after a change could not be stored, until one is stored.
    virtual bool isStored() const { return true; }

private:
    /// Implement `set`, `note` and `remove`, except for the call of `noteChange`.
    virtual bool storeOrRefuse(std::string_view key, PreferenceValue value) = 0;
    virtual bool storeOrKeep(std::string_view key, PreferenceValue value) = 0;
    virtual bool removeOrForget(std::string_view key) = 0;
};

} // namespace tidemark
