#pragma once

#include "app/ports/RecorderService.h"

#include <string_view>

namespace tidemark {

/// The unit tidemark.service of systemd's manager for the user, by systemctl(1), which reaches it
/// without a message bus, too.
class SystemdService final : public RecorderService {
public:
    static constexpr const char* unit = "tidemark.service";

    /// `properties` is the output of "systemctl show": a line NAME=VALUE for each. Throws `Error`
    /// when the unit is not installed.
    static Status parse(std::string_view properties);

    Status status() const override;
    bool isEnabledByFiles() const override;
    void enable() override;
    void disable() override;
};

} // namespace tidemark
