#include "core/base/Text.h"
#include "core/capture/FlatpakDeploy.h"

#include <cstdint>
#include <cstdlib>

/// Parses any bytes as the file "deploy" of a Flatpak. The texts in the result must be storable.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tidemark;
    const auto record = FlatpakDeploy::parse({reinterpret_cast<const char*>(bytes), size});
    if (!record)
        return 0;
    for (const auto& text : {record->name, record->version})
        if (text && !isValidUtf8(*text))
            std::abort();
    return 0;
}
