#pragma once

#include "app/base/Published.h"

#include <optional>
#include <string>

namespace tidemark {

/// What the running capture is doing; nothing when none runs.
class CaptureProgress : public Observable {
public:
    Published<std::optional<std::string>> stage{this};
};

} // namespace tidemark
