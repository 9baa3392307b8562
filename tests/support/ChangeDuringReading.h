#pragma once

#include "core/base/FileDescriptor.h"

#include <csignal>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

namespace tidemark::test {

/// Changes the date of a file or folder when the first file in a folder is read, like a program
/// that writes to a database meanwhile. The read itself causes a signal (F_NOTIFY of fcntl(2))
/// whose handler makes the change, so no second thread is needed and nothing depends on timing.
class ChangeDuringReading {
public:
    ChangeDuringReading(const std::filesystem::path& folder, const std::filesystem::path& changing)
        : watched(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
          before(std::signal(SIGIO, change)) {
        changed = changing.native();
        ::fcntl(watched.get(), F_NOTIFY, DN_ACCESS);
    }
    ~ChangeDuringReading() {
        watched.reset();
        std::signal(SIGIO, before);
    }
    ChangeDuringReading(const ChangeDuringReading&) = delete;
    ChangeDuringReading& operator=(const ChangeDuringReading&) = delete;

private:
    static void change(int) {
        const timespec date[] = {{1'900'000'000, 0}, {1'900'000'000, 0}};
        ::utimensat(AT_FDCWD, changed.c_str(), date, 0);
    }

    static inline std::string changed;

    FileDescriptor watched;
    void (*before)(int);
};

} // namespace tidemark::test
