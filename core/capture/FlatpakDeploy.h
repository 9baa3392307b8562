#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What Flatpak recorded of an application when it installed it: the file "deploy", a value of
/// GVariant's type (ssasta{sv}) in its serialised form, whose last part is a dictionary of texts
/// and numbers.
namespace tidemark::FlatpakDeploy {

struct Record {
    /// The keys "appdata-name" and "appdata-version".
    std::optional<std::string> name;
    std::optional<std::string> version;
};

/// Absent when the bytes are not such a value.
std::optional<Record> parse(std::string_view bytes);

} // namespace tidemark::FlatpakDeploy
