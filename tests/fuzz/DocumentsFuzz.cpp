#include "app/control/ControlProtocol.h"
#include "app/preferences/SettingsDocument.h"
#include "core/base/Error.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "core/growth/RecorderRun.h"
#include "core/growth/StorageHistoryStore.h"
#include "core/journal/Journal.h"
#include "core/memory/MemoryArchive.h"
#include "core/records/SystemActivity.h"
#include "core/storage/MeasurementCache.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace {

using namespace tidemark;

/// A document that can be read can be written, and reads back the same.
template <class T>
void readAgain(std::string_view bytes) {
    std::optional<T> document;
    try {
        document = json::decode<T>(bytes);
    } catch (const Error&) {
        return;
    }
    const std::string written = json::encoded(*document);
    if (json::encoded(json::decode<T>(written)) != written)
        std::abort();
}

void readSizes(std::string_view bytes) {
    readAgain<StorageHistory>(bytes);
    try {
        (void)StorageHistoryStore::decoded(bytes, "storage-history.json");
    } catch (const Error&) {
        // The sizes are damaged.
    }
}

/// Settings of any content give values or none, whatever is wrong with them, and can be changed.
void readSettings(std::string_view bytes) {
    auto settings = SettingsDocument::parsed(bytes);
    if (!settings)
        return;
    for (const char* key : {"recordingMode", "memoryFolders", "folderGrants", "listingTextSize"}) {
        (void)settings->value<bool>(key);
        (void)settings->value<std::int64_t>(key);
        (void)settings->value<std::string>(key);
        (void)settings->value<std::vector<std::string>>(key);
        (void)settings->value<Data>(key);
        (void)settings->value<std::map<std::string, Data>>(key);
    }
    (void)settings->foreignVersion();
    settings->set("recordingMode", true);
    const auto again = SettingsDocument::parsed(settings->bytes());
    if (!again || again->value<bool>("recordingMode") != true)
        std::abort();
}

constexpr auto readers = std::to_array<void (*)(std::string_view)>({
    &readAgain<Journal>,
    &readAgain<MemoryArchive>,
    &readAgain<std::vector<Shared<SystemActivity>>>,
    &readAgain<MeasurementRecords>,
    &readAgain<std::vector<RecorderRun>>,
    &readAgain<ControlRequest>,
    &readAgain<ControlAnswer>,
    &readSizes,
    &readSettings,
});
// tests/fuzz/run begins each sample with one of the digits 0 to 8.
static_assert(readers.size() == 9);

} // namespace

/// The first byte selects what the others are read as: one of the program's own documents, a
/// request, or its answer. Each run calls one reader and opens no file, so it takes microseconds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size > 0)
        readers[bytes[0] % readers.size()]({reinterpret_cast<const char*>(bytes) + 1, size - 1});
    return 0;
}
