#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tidemark::test {

/// Sets TZ for its lifetime, and then restores its earlier value. Does not call tzset(3), because
/// nothing in a running program calls it when a user travels to another time zone.
class ProcessZone {
public:
    explicit ProcessZone(const std::string& value) {
        if (const char* zone = std::getenv("TZ"))
            before = zone;
        ::setenv("TZ", value.c_str(), 1);
    }
    ~ProcessZone() {
        if (before)
            ::setenv("TZ", before->c_str(), 1);
        else
            ::unsetenv("TZ");
    }
    ProcessZone(const ProcessZone&) = delete;
    ProcessZone& operator=(const ProcessZone&) = delete;

private:
    std::optional<std::string> before;
};

} // namespace tidemark::test
