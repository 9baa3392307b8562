#pragma once

#include <optional>
#include <string_view>

namespace tidemark {

/// Reads the thermal pressure of the whole machine and follows it for its lifetime. Main thread
/// only; does not block.
///
/// It is created with a function `didChange`, which it calls from the event loop, never from its
/// constructor or destructor, whenever it returns another value than before.
class ThermalSource {
public:
    virtual ~ThermalSource() = default;

    /// A name of `ThermalState`; absent while it is not known and on a machine that reports none.
    virtual std::optional<std::string_view> state() const = 0;
};

} // namespace tidemark
