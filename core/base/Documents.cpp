#include "core/base/Documents.h"

namespace tidemark {

namespace {

DocumentTooLarge tooLarge(const std::filesystem::path& file, std::string_view failure) {
    return DocumentTooLarge(
        file, std::string(failure) + ": it has more than 2 GB, the most a document may have",
        EFBIG);
}

/// Creates the missing folders of a document. Returns the file to replace.
std::filesystem::path prepared(const std::filesystem::path& file, const FolderGuard& guard) {
    guard.require();
    createPrivateFolders(file.parent_path());
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
