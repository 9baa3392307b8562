#include "core/base/Text.h"
#include "core/packages/RpmHeader.h"

#include <cstdint>
#include <cstdlib>

/// Parses any bytes as the header of a package. Nothing outside of them may be read, and the name
/// and the version of the package must be storable.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tidemark;
    const auto header = RpmHeader::parse({reinterpret_cast<const char*>(bytes), size});
    if (!header)
        return 0;
    const auto owner = header->owner();
    if (owner && (!isValidUtf8(owner->package) || !isValidUtf8(owner->version)))
        std::abort();
    for (const std::size_t number : {0U, 1U, 7U, 0x3FFFFFFFU, 0x80000000U, 0xFFFFFFFFU})
        if (const auto file = header->file(number); file && file->size() > 2 * size)
            std::abort();
    return 0;
}
