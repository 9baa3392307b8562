#include "app/control/ControlProtocol.h"
#include "app/preferences/JsonPreferences.h"
#include "core/base/Documents.h"
#include "core/growth/RecorderRun.h"
#include "core/growth/StorageHistoryStore.h"
#include "core/journal/Journal.h"
#include "core/memory/MemoryArchive.h"
#include "core/records/SystemActivity.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace tidemark;

/// What is read can be written, and is read again as the same.
template <class T>
void readAgain(std::string_view bytes) {
    std::string written;
    try {
        written = json::encoded(json::decode<T>(bytes));
    } catch (const Error&) {
        return;
    }
    if (json::encoded(json::decode<T>(written)) != written)
        std::abort();
}

/// Settings of any content give values or defaults, whatever is wrong with them.
void readSettings(const std::filesystem::path& file) {
    const JsonPreferences settings(file, JsonPreferences::Opening::toRead);
    for (const char* key : {"recordingMode", "memoryFolders", "folderGrants", "listingTextSize"}) {
        (void)settings.boolean(key);
        (void)settings.integer(key);
        (void)settings.text(key);
        (void)settings.texts(key);
        (void)settings.data(key);
        (void)settings.dataTable(key);
    }
}

} // namespace

/// Reads any bytes as each of the program's own documents, as a request and as its answer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const test::TemporaryFolder folder;
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    readAgain<Journal>(text);
    readAgain<MemoryArchive>(text);
    readAgain<StorageHistory>(text);
    readAgain<std::vector<RecorderRun>>(text);
    readAgain<std::vector<SystemActivity>>(text);
    readAgain<ControlRequest>(text);
    readAgain<ControlAnswer>(text);
    const auto file = folder.write("document.json", text);
    try {
        (void)StorageHistoryStore::read(file);
    } catch (const FileError&) {
        // The history of sizes is damaged.
    }
    readSettings(file);
    return 0;
}
