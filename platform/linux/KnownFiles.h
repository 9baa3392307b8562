#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_set>

namespace tidemark {

/// Remembers which files were seen. Many programs save a file by writing another one and renaming
/// it, so that the file with that name has a new date of creation. A file whose path was seen
/// before was replaced, not created.
class KnownFiles {
public:
    /// Files beyond this number count as not seen. Each remembered file takes about 40 bytes.
    static constexpr std::size_t mostFiles = 200'000;

    /// Notes the path. Returns true when it was already noted before the last `finishRound`.
    bool note(std::string_view path);
    /// Ends a round: from now on, `note` returns true for the paths that were noted until now.
    void finishRound() { seen.merge(inRound); }

private:
    /// Digests of the paths.
    std::unordered_set<std::uint64_t> seen;
    std::unordered_set<std::uint64_t> inRound;
};

} // namespace tidemark
