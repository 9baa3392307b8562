#include "core/system/BirthTime.h"

#include <sys/stat.h>

namespace tidemark {

std::optional<std::int64_t> birthTime(int descriptor) {
    struct stat status{};
    if (::fstat(descriptor, &status) != 0)
        return std::nullopt;
    return status.st_birthtimespec.tv_sec * std::int64_t{1'000'000'000}
           + status.st_birthtimespec.tv_nsec;
}

} // namespace tidemark
