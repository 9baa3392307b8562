#pragma once

namespace tidemark {

class MemoryHistoryService;

/// One source of the memory history, such as the clipboard. It reads its own settings and passes
/// its records to `MemoryHistoryService::update`. Main thread only.
class MemoryCollector {
public:
    virtual ~MemoryCollector() = default;

    /// Starts collecting what happens from now on, if the settings allow it; only `FileCollector`
    /// also adds earlier files, once. Not called again before `stop`. `history` must exist until
    /// `stop`.
    virtual void start(MemoryHistoryService& history) = 0;
    /// Stops collecting and drops unfinished work. Does nothing when it was not started.
    virtual void stop() = 0;
};

} // namespace tidemark
