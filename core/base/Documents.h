#pragma once

#include "core/base/Files.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"

#include <cstdint>
#include <optional>

/// The JSON documents that the program keeps: each is read whole into one record and replaced whole
/// by one. A document may be a symbolic link, so that it can be kept on another disk: the file that
/// the link points to is read and replaced, and the link stays.
///
/// All functions throw `FileError`, which names the document.
namespace tidemark {

/// The largest document that is read or written, in bytes. A larger one would fill the memory of an
/// ordinary machine.
inline constexpr std::size_t largestDocument = 2'000'000'000;

/// The bytes of a document; absent where there is none. Throws for a link whose target does not
/// exist.
std::optional<std::string> readDocumentBytes(const std::filesystem::path& file);

namespace detail {

/// The error of a document that has another form than expected, described by `problem`. A document
/// with the key "schemaVersion" or "version" and another number than `supported` was written by
/// another release.
FileError undecodable(std::string_view bytes, const std::filesystem::path& file,
                      const char* problem, std::int64_t supported);

/// The version of the documents that this release reads: 1 for a record type that states none.
template <class T>
constexpr std::int64_t supportedVersion() {
    if constexpr (requires { T::supportedVersion; })
        return T::supportedVersion;
    return 1;
}

} // namespace detail

/// The record in the bytes of the document `file`. The error names the place in the document and
/// what is wrong there, or the version of a document of another release.
template <class T>
T decodeDocument(std::string_view bytes, const std::filesystem::path& file) {
    try {
        return json::decode<T>(bytes);
    } catch (const json::DecodingError& error) {
        throw detail::undecodable(bytes, file, error.what(), detail::supportedVersion<T>());
    }
}

/// The record that a document holds; absent where there is no document.
template <class T>
std::optional<T> readDocument(const std::filesystem::path& file) {
    const auto bytes = readDocumentBytes(file);
    return bytes ? std::optional(decodeDocument<T>(*bytes, file)) : std::nullopt;
}

/// A document would exceed the limit of its size.
class DocumentTooLarge : public FileError {
public:
    using FileError::FileError;
};

namespace detail {

/// Writes the replacement of a document, of at most `limit` bytes.
class DocumentReplacement {
public:
    DocumentReplacement(const std::filesystem::path& file, const FolderGuard& guard,
                        std::size_t limit);
    void write(std::string_view piece);
    void commit() { replacement.commit(); }

private:
    std::filesystem::path document;
    FileReplacement replacement;
    std::size_t left;
};

} // namespace detail

/// Replaces a document with mode 0600, or creates it, with missing folders of mode 0700. Also
/// throws what `guard` throws, and `Error` for a number that is not finite. After a failure the old
/// document is intact, unless only flushing its folder failed: then the new one is in place.
template <class T>
void writeDocument(const std::filesystem::path& file, const T& record,
                   const FolderGuard& guard = {}, std::size_t limit = largestDocument) {
    detail::DocumentReplacement document(file, guard, limit);
    json::write(record, [&](std::string_view piece) { document.write(piece); });
    document.commit();
}

} // namespace tidemark
