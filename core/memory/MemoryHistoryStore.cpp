#include "core/memory/MemoryHistoryStore.h"

#include "core/base/Digest.h"
#include "core/base/Documents.h"
#include "core/base/Text.h"

#include <cerrno>

#include <sys/stat.h>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view payloadExtension = ".data";
constexpr std::string_view textExtension = ".text";

fs::path folderOf(const fs::path& document) {
    return document.has_parent_path() ? document.parent_path() : fs::path(".");
}

void makePrivate(const fs::path& folder, const FolderGuard& guard) {
    createPrivateFolders(folder, guard);
    if (::chmod(folder.c_str(), 0700) != 0)
        throw FileError::ofSystem(folder, "could not be made private", errno);
}

/// The next load would fail if a text file were not UTF-8.
std::string asText(const std::string& text) {
    return isValidUtf8(text) ? text : textFromBytes(text);
}

std::optional<bool> flag(bool isSet) {
    return isSet ? std::optional(true) : std::nullopt;
}

} // namespace

MemoryHistoryStore::MemoryHistoryStore(fs::path url, FolderGuard guard)
    : url(std::move(url)), guard(std::move(guard)),
      payloads(folderOf(this->url) / "memory-payloads", this->guard) {}

std::string MemoryHistoryStore::blobName(std::string_view id, std::string_view extension) {
    return Sha256::hex(id).append(extension);
}

MemoryArchive MemoryHistoryStore::load() {
    const std::scoped_lock lock(mutex);
    readable = false;
    savedBlobs.clear();
    MemoryArchive archive = read();
    readable = true;
    return archive;
}

MemoryArchive MemoryHistoryStore::read() {
    MemoryArchive archive = readDocument<MemoryArchive>(url).value_or(MemoryArchive());
    if (archive.version != MemoryArchive::supportedVersion)
        throw StoreError(StoreError::Kind::unsupportedVersion,
                         textFromBytes(url.native()) + " is of version "
                             + std::to_string(archive.version)
                             + ", which this release can't read.");
    for (auto& record : archive.records)
        if (record->payloadStored == true || record->textStored == true)
            record = withContents(record);
    return archive;
}

Shared<MemoryRecord> MemoryHistoryStore::withContents(const Shared<MemoryRecord>& record) {
    MemoryRecord whole = *record;
    if (whole.payloadStored == true)
        whole.payload = Data{fetch(blobName(whole.id, payloadExtension))};
    if (whole.textStored == true) {
        const std::string name = blobName(whole.id, textExtension);
        whole.text = fetch(name);
        if (!isValidUtf8(*whole.text))
            throw FileError(payloads.path() / name, "could not be read: it is no UTF-8 text",
                            EILSEQ);
    }
    return Shared(std::move(whole));
}

std::string MemoryHistoryStore::fetch(const std::string& name) {
    std::string bytes = payloads.read(name);
    savedBlobs.insert(name);
    return bytes;
}

void MemoryHistoryStore::save(const MemoryArchive& archive) {
    const std::scoped_lock lock(mutex);
    if (!readable)
        throw StoreError(StoreError::Kind::notReadable,
                         textFromBytes(url.native())
                             + " could not be read, so it is not replaced.");
    makePrivate(folderOf(url), guard);
    payloads.prepare();

    std::set<std::string> wanted;
    MemoryArchive document = archive;
    for (auto& record : document.records)
        record = withoutContents(record, wanted);
    writeDocument(url, document, guard);
    payloads.keepOnly(wanted);
    savedBlobs = std::move(wanted);
}

Shared<MemoryRecord> MemoryHistoryStore::withoutContents(const Shared<MemoryRecord>& record,
                                                         std::set<std::string>& wanted) const {
    const bool isClip = record->kind == MemoryRecord::Kind::clipboard;
    const bool hasPayload = isClip && record->payload;
    const bool hasText = isClip && record->text;
    if (hasPayload)
        keep(blobName(record->id, payloadExtension), record->payload->bytes, wanted);
    if (hasText)
        keep(blobName(record->id, textExtension), asText(*record->text), wanted);

    // The flags are set anew, whatever the record had: a document with a flag for a file that does
    // not exist can't be loaded.
    if (!hasPayload && !hasText && !record->payloadStored && !record->textStored)
        return record;
    MemoryRecord stored = *record;
    stored.payloadStored = flag(hasPayload);
    stored.textStored = flag(hasText);
    if (hasPayload)
        stored.payload.reset();
    if (hasText)
        stored.text.reset();
    return Shared(std::move(stored));
}

void MemoryHistoryStore::keep(const std::string& name, std::string_view bytes,
                              std::set<std::string>& wanted) const {
    if (!savedBlobs.contains(name) || !payloads.contains(name))
        payloads.write(name, bytes);
    wanted.insert(name);
}

} // namespace tidemark
