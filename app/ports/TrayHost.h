#pragma once

namespace tidemark {

/// Follows for its lifetime whether the desktop shows icons of programs beside its clock. Main
/// thread only.
class TrayHost {
public:
    virtual ~TrayHost() = default;
};

} // namespace tidemark
