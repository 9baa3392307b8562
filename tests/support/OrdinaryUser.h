#pragma once

#include <filesystem>

#include <unistd.h>

namespace tidemark::test {

/// For its lifetime a process of root has the rights of an ordinary user, so that permissions
/// mean something. `folder` is opened to that user first. Does nothing for who is no root.
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
