#pragma once

#include <cstdlib>
#include <string>

namespace tidemark::test {

/// The value of TZ until the end of a test. tzset(3) is not called, as nobody calls it when a
/// user travels.
class ProcessZone {
public:
    explicit ProcessZone(const std::string& value) { ::setenv("TZ", value.c_str(), 1); }
    ~ProcessZone() { ::unsetenv("TZ"); }
    ProcessZone(const ProcessZone&) = delete;
    ProcessZone& operator=(const ProcessZone&) = delete;
};

} // namespace tidemark::test
