#pragma once

#include "recorder/RecorderPlaces.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Everything that the program keeps for this user, to be removed. Only files with the names that
/// the program itself gives are removed, in its own folders; whatever else is there stays. No link
/// is followed. All functions block.
class Erasure {
public:
    /// Files of one kind in one folder, such as the texts of clips.
    struct Part {
        /// The file, or the folder when there may be several files.
        std::filesystem::path path;
        /// What the files hold, in words for the user.
        std::string content;
        std::size_t files = 0;
        std::int64_t bytes = 0;
    };

    /// Finds what is there. `loginItem` is the file that starts the program at login, if there is
    /// such a file. Throws `Error` for the first thing that could not be removed: a link or a
    /// folder in the place of a document, a folder that can't be read or changed.
    static Erasure of(const RecorderPlaces& places,
                      const std::optional<std::filesystem::path>& loginItem);

    const std::vector<Part>& parts() const { return found; }
    /// How many files in the program's folders are not its own.
    std::size_t foreignFiles() const { return foreign; }
    bool isEmpty() const { return found.empty(); }

    /// Removes the files, and the folders that are empty then. The data folder must be locked by
    /// this process; the file of the lock goes last. Throws `FileError`.
    void carryOut() const;

private:
    struct File {
        std::filesystem::path folder;
        std::string name;
    };

    std::vector<Part> found;
    std::vector<File> files;
    /// Each before the folder that it lies in.
    std::vector<std::filesystem::path> folders;
    std::size_t foreign = 0;

    friend class ErasureSearch;
};

} // namespace tidemark
