#include "core/base/Documents.h"

#include "core/base/DocumentVersion.h"

namespace tidemark {

namespace {

DocumentTooLarge tooLarge(const std::filesystem::path& file, std::string_view failure) {
    return DocumentTooLarge(
        file, std::string(failure) + ": it has more than 2 GB, the most a document may have",
        EFBIG);
}

/// Creates the missing folders of a document. Returns the file to replace.
std::filesystem::path prepared(const std::filesystem::path& file, const FolderGuard& guard) {
    createPrivateFolders(file.parent_path(), guard);
    return replaceablePath(file);
}

} // namespace

std::optional<std::string> readDocumentBytes(const std::filesystem::path& file) {
    if (!fileExists(file))
        return std::nullopt;
    try {
        return readFile(file, largestDocument);
    } catch (const FileError& error) {
        if (error.code() == EFBIG)
            throw tooLarge(file, "could not be read");
        throw;
    }
}

namespace detail {

FileError undecodable(std::string_view bytes, const std::filesystem::path& file,
                      const char* problem, std::int64_t supported) {
    const auto version = documentVersion(bytes);
    if (version && *version != supported)
        return {file,
                "is of version " + std::to_string(*version) + ", which this release can't read",
                EILSEQ};
    return {file, std::string("could not be read: ") + problem, EILSEQ};
}

DocumentReplacement::DocumentReplacement(const std::filesystem::path& file,
                                         const FolderGuard& guard, std::size_t limit)
    : document(file), replacement(prepared(file, guard), guard), left(limit) {}

void DocumentReplacement::write(std::string_view piece) {
    if (piece.size() > left)
        throw tooLarge(document, "could not be written");
    left -= piece.size();
    replacement.write(piece);
}

} // namespace detail

} // namespace tidemark
