#pragma once

namespace tidemark {

/// One source of the memory history, such as the clipboard. It looks at its own settings, and
/// hands what it finds to `MemoryHistoryService::update`. Main thread only.
class MemoryCollector {
public:
    virtual ~MemoryCollector() = default;

    /// Begins anew, if the settings want it: what is there at this moment is no news. Comes only
    /// after `stop`, or first.
    virtual void start() = 0;
    /// Ends, and throws away what is under way. Harmless when it was not started.
    virtual void stop() = 0;
};

} // namespace tidemark
