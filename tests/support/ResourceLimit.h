#pragma once

#include <csignal>

#include <sys/resource.h>

namespace tidemark::test {

/// Lowers a limit of this process (setrlimit(2)) for its lifetime. With `RLIMIT_FSIZE`, writing
/// beyond so many bytes of a file fails, as on a full disk.
class ResourceLimit {
public:
    ResourceLimit(__rlimit_resource_t resource, rlim_t value) : resource(resource) {
        ::getrlimit(resource, &before);
        const rlimit lowered{value, before.rlim_max};
        ::setrlimit(resource, &lowered);
    }
    ~ResourceLimit() {
        ::setrlimit(resource, &before);
        ::signal(SIGXFSZ, previous);
    }
    ResourceLimit(const ResourceLimit&) = delete;
    ResourceLimit& operator=(const ResourceLimit&) = delete;

private:
    __rlimit_resource_t resource;
    rlimit before{};
    /// A handler, unlike an ignored signal, is not kept by the programs that a test starts.
    sighandler_t previous = ::signal(SIGXFSZ, [](int) {});
};

} // namespace tidemark::test
