#include "core/system/FolderNames.h"

#include <array>
#include <cerrno>
#include <cstddef>

namespace tidemark {

/// readdir(3) would ask for the flags and the status of every folder first.
struct FolderNames::Batch {
    alignas(dirent64) std::array<char, 1 << 15> entries;
    std::size_t start = 0;
    std::size_t end = 0;
};

void FolderNames::Delete::operator()(Batch* unused) const {
    delete unused;
}

const dirent* FolderNames::next() {
    static_assert(sizeof(dirent) == sizeof(dirent64)
                  && offsetof(dirent, d_name) == offsetof(dirent64, d_name));
    if (!batch)
        batch.reset(new Batch);
    if (batch->start == batch->end) {
        const auto size = ::getdents64(folder.get(), batch->entries.data(), batch->entries.size());
        // A folder that was removed meanwhile has no names left, which is no error.
        failedWith = size < 0 && errno != ENOENT ? errno : 0;
        batch->start = 0;
        batch->end = size < 0 ? 0 : static_cast<std::size_t>(size);
        if (size <= 0)
            return nullptr;
    }
    const auto* entry = reinterpret_cast<const dirent*>(batch->entries.data() + batch->start);
    batch->start += entry->d_reclen;
    return entry;
}

} // namespace tidemark
