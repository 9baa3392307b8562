#pragma once

#include <cstdlib>
#include <string>

namespace tidemark::test {

/// Sets TZ for its lifetime. Does not call tzset(3), because nothing does when a user travels.
class ProcessZone {
public:
    explicit ProcessZone(const std::string& value) { ::setenv("TZ", value.c_str(), 1); }
    ~ProcessZone() { ::unsetenv("TZ"); }
    ProcessZone(const ProcessZone&) = delete;
    ProcessZone& operator=(const ProcessZone&) = delete;
};

} // namespace tidemark::test
