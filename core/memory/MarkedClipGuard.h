#pragma once

namespace tidemark {

/// Keeps a marked item, such as a password, from being recorded when another program offers it
/// again. Clipboard keepers take a selection over when its owner ends or changes, with the content
/// and without the mark. So the item that follows a marked one is not kept when it may be the same:
/// when it comes soon, when a keeper offers it, or when it is unknown who offers it. An unmarked
/// item may be missed; a marked one is not kept. Times are in monotonic seconds.
class MarkedClipGuard {
public:
    /// Keepers take over within this time after a marked item was copied or its owner ended.
    static constexpr double keeperTime = 2;

    /// A marked item was copied, or one that may have been marked, since its types could not be
    /// read.
    void noteMarked(double now);
    /// The present item was withdrawn: its owner ended, or cleared the clipboard.
    void noteEnd(double now);

    /// Whether an unmarked item that was copied may be read. `mayBeKeeper` is true when a clipboard
    /// keeper, or an unknown program, offers it. Called once per item.
    bool admits(double now, bool mayBeKeeper);

private:
    /// True until the item that follows a marked one.
    bool followsMarked = false;
    /// Items before this time are not read.
    double end = 0;
};

} // namespace tidemark
