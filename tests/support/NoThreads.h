#pragma once

#include <cstddef>

#include <pthread.h>

namespace tidemark::test {

/// While an object of this class exists, no thread can be started: it makes the default stack
/// larger than the address space of a process on x86-64.
class NoThreads {
public:
    NoThreads() {
        ::pthread_getattr_default_np(&before);
        pthread_attr_t attributes;
        ::pthread_getattr_default_np(&attributes);
        ::pthread_attr_setstacksize(&attributes, std::size_t{1} << 47U);
        ::pthread_setattr_default_np(&attributes);
        ::pthread_attr_destroy(&attributes);
    }
    ~NoThreads() {
        ::pthread_setattr_default_np(&before);
        ::pthread_attr_destroy(&before);
    }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

private:
    pthread_attr_t before;
};

} // namespace tidemark::test
