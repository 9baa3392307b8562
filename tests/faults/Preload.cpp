// Loaded into the unchanged program by LD_PRELOAD, for the tests in this folder: simulates a clock
// that runs fast or jumps, and a disk that becomes full.
//
// TIDEMARK_TEST_CLOCK names a file of three binary64: base, speed and shift. The time of day is
// base + (real - base) * speed + shift. Writing the file changes the clock of all programs at once.
// Timers are not affected.
//
// TIDEMARK_TEST_FULL="N FOLDER": from the Nth call on, calls that create or change a file below
// FOLDER fail with ENOSPC. TIDEMARK_TEST_CALLS names a file that gets a line for each call.

#include <cerrno>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

struct FastClock {
    double base;
    double speed;
    double shift;
};

const volatile FastClock* mappedClock() {
    const char* name = std::getenv("TIDEMARK_TEST_CLOCK");
    if (!name)
        return nullptr;
    const int file = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, name, O_RDONLY | O_CLOEXEC));
    void* address = ::mmap(nullptr, sizeof(FastClock), PROT_READ, MAP_SHARED, file, 0);
    ::close(file);
    // Without the clock the test would prove nothing.
    if (address == MAP_FAILED)
        std::abort();
    return static_cast<const volatile FastClock*>(address);
}

/// Counts the calls that fail on a full disk.
class FullDisk {
public:
    FullDisk() {
        if (const char* text = std::getenv("TIDEMARK_TEST_FULL")) {
            char* rest = nullptr;
            first = std::strtol(text, &rest, 10);
            folder = rest + 1;
        }
        if (const char* name = std::getenv("TIDEMARK_TEST_CALLS"))
            log = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, name,
                                             O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    }

    /// True when the call is to fail; `errno` is set then.
    bool refuses(const char* call, const char* path) {
        if (first == 0 || !std::string(path).starts_with(folder))
            return false;
        const std::string line = std::string(call) + " " + path + "\n";
        ::syscall(SYS_write, log, line.data(), line.size());
        if (++calls < first)
            return false;
        errno = ENOSPC;
        return true;
    }
    bool refuses(const char* call, int file) {
        if (first == 0)
            return false;
        const std::string link = "/proc/self/fd/" + std::to_string(file);
        char path[4096]{};
        return ::readlink(link.c_str(), path, sizeof path - 1) > 0 && refuses(call, path);
    }

private:
    long first = 0;
    long calls = 0;
    int log = -1;
    std::string folder;
};

FullDisk& disk() {
    static FullDisk only;
    return only;
}

template <class Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

mode_t modeOf(int flags, va_list list) {
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(list, mode_t) : 0;
}

bool makesFile(int flags, const char* path) {
    return (flags & O_CREAT) != 0 && ::access(path, F_OK) != 0;
}

} // namespace

// A pragma, because the attributes of the C library's declarations differ between its versions.
#pragma GCC visibility push(default)
extern "C" {

int clock_gettime(clockid_t which, timespec* time) noexcept {
    static const volatile FastClock* const fast = mappedClock();
    const long result = ::syscall(SYS_clock_gettime, which, time);
    if (fast && which == CLOCK_REALTIME && result == 0) {
        const double real =
            static_cast<double>(time->tv_sec) + static_cast<double>(time->tv_nsec) / 1e9;
        const double moved = fast->base + (real - fast->base) * fast->speed + fast->shift;
        time->tv_sec = static_cast<time_t>(std::floor(moved));
        time->tv_nsec = static_cast<long>((moved - std::floor(moved)) * 1e9);
    }
    return static_cast<int>(result);
}

int open(const char* path, int flags, ...) {
    va_list list;
    va_start(list, flags);
    const mode_t mode = modeOf(flags, list);
    va_end(list);
    if (makesFile(flags, path) && disk().refuses("open", path))
        return -1;
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int mkdir(const char* path, mode_t mode) noexcept {
    static const auto real = next<decltype(&::mkdir)>("mkdir");
    return disk().refuses("mkdir", path) ? -1 : real(path, mode);
}

int rename(const char* from, const char* to) noexcept {
    static const auto real = next<decltype(&::rename)>("rename");
    return disk().refuses("rename", to) ? -1 : real(from, to);
}

ssize_t write(int file, const void* bytes, size_t count) {
    return disk().refuses("write", file) ? -1 : ::syscall(SYS_write, file, bytes, count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
    return disk().refuses("pwrite", file) ? -1
                                          : ::syscall(SYS_pwrite64, file, bytes, count, offset);
}

int fsync(int file) {
    return disk().refuses("fsync", file) ? -1 : static_cast<int>(::syscall(SYS_fsync, file));
}

} // extern "C"
#pragma GCC visibility pop
