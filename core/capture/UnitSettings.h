#pragma once

#include "core/base/KeyFile.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The settings of a unit that are compared. `read` is called with its file and then with its
/// drop-ins, each of which can change the settings. A line of a list adds to the list, and an empty
/// one clears it; of other settings the last line takes effect, and an empty one means the default.
class UnitSettings {
public:
    /// The suffix of `unitName` determines which group of the files is read.
    explicit UnitSettings(std::string_view unitName);

    void read(const KeyFile& file);

    /// The value of a setting that is no list; empty when it is not set.
    std::string value(std::string_view name) const;
    /// The values of a list, in order.
    std::vector<std::string> values(std::string_view name) const;

    /// Texts "Name=value" by the definition key that they belong to, in the order of the names and
    /// within a name in that of the files. Settings with the same meaning have the same text.
    std::map<std::string_view, std::vector<std::string>> byDefinitionKey() const;

private:
    std::string group;
    std::map<std::string, std::vector<std::string>, std::less<>> settings;
};

} // namespace tidemark
