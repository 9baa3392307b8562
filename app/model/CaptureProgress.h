#pragma once

#include "app/base/Published.h"

#include <optional>
#include <string>

namespace tidemark {

/// The phase of the running capture; empty when none is running.
class CaptureProgress : public Observable {
public:
    Published<std::optional<std::string>> stage{this};
};

} // namespace tidemark
