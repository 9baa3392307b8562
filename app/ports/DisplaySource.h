#pragma once

#include "core/records/EnvironmentActivity.h"

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// A display that is connected and shows something.
struct ObservedDisplay {
    /// Identifies the display among all that are connected, and again after a reconnection at the
    /// same place; such as the name of the connector with maker and model. No serial number.
    std::string key;
    /// The name for the user.
    std::string name;
    /// Absent when the mode can't be read.
    std::optional<DisplayContext> mode;

    bool operator==(const ObservedDisplay&) const = default;
};

/// Follows the displays of the user's session for its lifetime. Main thread only; does not block.
///
/// It is created with a function `didChange`, which it calls whenever `displays` returns another
/// value than before. The call comes from the event loop, never from the constructor or destructor.
/// Several calls for one change are harmless.
class DisplaySource {
public:
    virtual ~DisplaySource() = default;

    /// All displays at present, in any order. Absent while they are not known: before the first
    /// answer, without a display server, and after it has ended. A change from or to absent is a
    /// new starting point for the observer and no connection or disconnection.
    virtual std::optional<std::vector<ObservedDisplay>> displays() const = 0;
};

} // namespace tidemark
