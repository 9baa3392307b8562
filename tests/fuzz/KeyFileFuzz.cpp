#include "core/base/JsonEncoder.h"
#include "core/base/KeyFile.h"
#include "core/base/Text.h"
#include "core/capture/DesktopEntry.h"

#include <cstdint>
#include <cstdlib>

/// Parses any bytes as a key file, with both kinds of continuation, and as a desktop entry. The
/// texts in the result must be storable, and each key must be in a group.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tidemark;
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    for (const auto continuation :
         {KeyFile::Continuation::none, KeyFile::Continuation::backslash}) {
        auto parsed = KeyFile::parse(text, continuation);
        if (!parsed)
            continue;
        // The views must survive a move.
        const KeyFile file = *std::move(parsed);
        std::size_t total = 0;
        for (const auto& entry : file.entries()) {
            if (!file.hasGroup(entry.group) || !isValidUtf8(entry.text()))
                std::abort();
            total += entry.key.size() + entry.bytes.size() + KeyFile::unescaped(entry.bytes).size();
        }
        if (total > 2 * size)
            std::abort();
    }
    const FolderEntry entry{.path = "/folder/name.desktop", .modified = {}, .sharedVersion = {}};
    if (const auto found = DesktopEntry::described(text, entry))
        (void)json::encoded(found->application);
    return 0;
}
