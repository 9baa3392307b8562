#include "core/base/FolderGuard.h"

#include "core/base/Error.h"

namespace tidemark {

void FolderGuard::require() const {
    if (isOwn && !isOwn())
        throw Error("The data folder was removed or replaced while Tidemark was running; start "
                    "Tidemark again.");
}

} // namespace tidemark
