#pragma once

#include "core/memory/CopiedItem.h"

#include <functional>
#include <string>
#include <vector>

namespace tidemark {

/// What this session lets the program know about copies.
struct ClipboardAccess {
    /// Why copies can't be watched, as a sentence; empty when they can.
    std::string absence{};
    /// Whether the system reports which application copied an item.
    bool hasWriter = false;
    /// Whether it reports which application is in front.
    bool hasFrontmost = false;

    bool operator==(const ClipboardAccess&) const = default;
};

/// The clipboard of the user's session. It may be watched while no session exists; when
/// a session begins or ends, the `ClipboardAccess` changes. No call blocks. Main thread only.
class Clipboard {
public:
    using Copied = std::function<void(CopiedItem)>;
    using AccessChanged = std::function<void(const ClipboardAccess&)>;

    virtual ~Clipboard() = default;

    /// Calls `copied` for each item that is copied from now on, and `accessChanged` with the access
    /// whenever it is known or changes, until `unwatch`. Marked items, and items of applications in
    /// `excluded` (a value of `memoryExcludedApps`), are never read. Neither is the item after one
    /// of these, if it may be the same item again (`MarkedClipGuard`). What this program puts on
    /// the clipboard is not reported.
    virtual void watch(std::string excluded, Copied copied, AccessChanged accessChanged) = 0;
    virtual void unwatch() = 0;
    /// Replaces the content of the clipboard by an item that is offered under the types of
    /// `contents`. Done in the background. False, without an effect, when there is no session.
    virtual bool put(std::vector<ClipData> contents) = 0;
};

} // namespace tidemark
