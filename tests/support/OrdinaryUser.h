#pragma once

#include <filesystem>

#include <unistd.h>

namespace tidemark::test {

/// Makes a process of root act as the user 65534 while this object exists, so that file permissions
/// apply. `folder` is first made accessible to all users. Does nothing unless the process runs as
/// root.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const std::filesystem::path& folder) {
        if (!wasRoot)
            return;
        std::filesystem::permissions(folder, std::filesystem::perms(0777));
        changed = ::seteuid(65534) == 0;
    }
    ~OrdinaryUser() {
        if (changed)
            changed = ::seteuid(0) != 0;
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    bool wasRoot = ::geteuid() == 0;
    bool changed = false;
};

} // namespace tidemark::test
