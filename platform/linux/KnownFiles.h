#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_set>

namespace tidemark {

/// Remembers which files were seen. Many programs save a file by writing another one and renaming
/// it, so that the file with that name has a new date of creation. One that was seen before was
/// replaced, not created.
class KnownFiles {
public:
    /// Of more files, the others count as not seen. They take about 40 bytes each.
    static constexpr std::size_t mostFiles = 200'000;

    /// True when the path was noted before the last `finishRound`. Notes it.
    bool note(std::string_view path);
    /// From now on, what was noted until now counts as seen before.
    void finishRound() { seen.merge(inRound); }

private:
    /// Digests of the paths.
    std::unordered_set<std::uint64_t> seen;
    std::unordered_set<std::uint64_t> inRound;
};

} // namespace tidemark
