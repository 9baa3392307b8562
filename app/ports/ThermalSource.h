#pragma once

#include <optional>
#include <string_view>

namespace tidemark {

/// Reads the thermal pressure of the whole machine and follows it for its lifetime. Main thread
/// only; does not block.
///
/// It is created with a function `didChange`, which it calls whenever `state` returns another value
/// than before. The call comes from the event loop, never from the constructor or destructor.
class ThermalSource {
public:
    virtual ~ThermalSource() = default;

    /// A name of `ThermalState`; absent while it is not known and on a machine that reports none.
    virtual std::optional<std::string_view> state() const = 0;
};

} // namespace tidemark
