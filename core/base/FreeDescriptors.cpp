#include "core/base/FreeDescriptors.h"

#include "core/base/Error.h"
#include "core/base/FileDescriptor.h"

#include <string>
#include <vector>

#include <fcntl.h>

namespace tidemark {

void requireFreeDescriptors(int count) {
    // Comparing with the limit is not enough: the parent may have left any number of files open.
    std::vector<FileDescriptor> opened;
    for (int left = count; left > 0; --left)
        if (!opened.emplace_back(::open("/", O_RDONLY | O_CLOEXEC)))
            throw Error("Too few files may be open at once: " + std::to_string(count)
                        + " more are needed (ulimit -n).");
}

} // namespace tidemark
