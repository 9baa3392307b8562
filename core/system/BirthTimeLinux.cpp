#include "core/system/BirthTime.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace tidemark {

std::optional<std::int64_t> birthTime(int descriptor) {
    struct statx status{};
    if (::statx(descriptor, "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, STATX_BTIME, &status) != 0
        || (status.stx_mask & STATX_BTIME) == 0)
        return std::nullopt;
    return status.stx_btime.tv_sec * 1'000'000'000 + status.stx_btime.tv_nsec;
}

} // namespace tidemark
