#include "core/system/FolderNames.h"

#include <cerrno>

#include <fcntl.h>

namespace tidemark {

struct FolderNames::Batch {
    DIR* stream;
};

void FolderNames::Delete::operator()(Batch* unused) const {
    ::closedir(unused->stream);
    delete unused;
}

const dirent* FolderNames::next() {
    errno = 0;
    if (!batch) {
        // Closing the stream closes its descriptor, so the stream gets a duplicate of the folder's.
        // Both share the position in the folder.
        FileDescriptor own(::fcntl(folder.get(), F_DUPFD_CLOEXEC, 0));
        DIR* const stream = own ? ::fdopendir(own.get()) : nullptr;
        if (stream) {
            own.release();
            batch.reset(new Batch{stream});
        }
    }
    const dirent* entry = batch ? ::readdir(batch->stream) : nullptr;
    if (!entry)
        failedWith = errno;
    return entry;
}

} // namespace tidemark
