#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"
#include "core/base/Shared.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// Bytes by name.
using SizeByName = std::map<std::string, std::int64_t>;

/// One measured folder. Sizes are bytes.
struct FolderSize {
    static constexpr bool recurs = true;
    /// The most files directly in a folder whose sizes are recorded one by one; of more, only the
    /// sum is recorded.
    static constexpr std::size_t directFileLimit = 10'000;
    /// The key of `breakdown` for the files that lie directly in the folder.
    static constexpr std::string_view filesInFolder = "Files in folder";

    /// Absolute path; also the record's identity.
    std::string path;
    std::string name;
    std::int64_t bytes = 0;
    /// Bytes of each direct subfolder, by name, and of all files directly in the folder together,
    /// by `filesInFolder`. Empty when not all of them are known.
    Shared<SizeByName> breakdown;
    /// Bytes of each file directly in the folder. Absent when the names are not known or were not
    /// kept, which does not mean that there are no files.
    OptionalShared<SizeByName> directFileSizes;
    std::optional<std::int64_t> allocatedBytes;
    /// Number of direct entries. A Trash with 0 was observed empty.
    std::optional<std::int64_t> itemCount;
    /// True when the size was added up from measurements of child folders at various times.
    std::optional<bool> rollingMeasurement;
    std::optional<Date> measuredAt;

    const std::string& id() const { return path; }

    bool operator==(const FolderSize&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"path", &FolderSize::path, Private},
            Field{"name", &FolderSize::name, Shown},
            Field{"bytes", &FolderSize::bytes},
            Field{"breakdown", &FolderSize::breakdown, Shown},
            Field{"directFileSizes", &FolderSize::directFileSizes, Omitted},
            Field{"allocatedBytes", &FolderSize::allocatedBytes},
            Field{"itemCount", &FolderSize::itemCount},
            Field{"rollingMeasurement", &FolderSize::rollingMeasurement},
            Field{"measuredAt", &FolderSize::measuredAt},
        };
    }
};

} // namespace tidemark
