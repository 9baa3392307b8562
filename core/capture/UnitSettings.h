#pragma once

#include "core/base/KeyFile.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The settings of a unit that are watched: of its file and then of its drop-ins, each read on top
/// of what was read before. Settings of a list add to it, and an empty one clears the list; for
/// others the last one takes effect, and an empty one means the default.
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
