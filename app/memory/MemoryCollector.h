#pragma once

namespace tidemark {

class MemoryHistoryService;

/// One source of the memory history, such as the clipboard. It looks at its own settings, and
/// hands what it finds to `MemoryHistoryService::update`. Main thread only.
class MemoryCollector {
public:
    virtual ~MemoryCollector() = default;

    /// Begins anew, if the settings want it: what is there at this moment is not recorded. Called
    /// only after `stop`, or first. `history` outlives what is begun.
    virtual void start(MemoryHistoryService& history) = 0;
    /// Ends, and throws away what is under way. Harmless when it was not started.
    virtual void stop() = 0;
};

} // namespace tidemark
