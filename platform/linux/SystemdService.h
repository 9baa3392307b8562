#pragma once

#include "app/ports/RecorderService.h"

#include <string_view>

namespace tidemark {

/// The recorder as the unit tidemark.service of systemd's manager for the user, read and changed by
/// systemctl(1), which also works without a message bus.
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
