#pragma once

#include "core/memory/ClipRules.h"
#include "core/memory/MarkedClipGuard.h"
#include "platform/linux/MonotonicSeconds.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tidemark {

/// An item on the clipboard, which another program supplies on request. Requests are answered at
/// once or later, within a time limit, and never after this object is destroyed.
class OfferedItem {
public:
    using TypesRead = std::function<void(std::optional<ClipTypeNames>)>;
    using Read = std::function<void(ClipData)>;

    virtual ~OfferedItem() = default;

    /// The types of the item; absent when its program does not answer.
    virtual void readTypes(TypesRead use) = 0;
    /// The content under a type, of which `limit` bytes are enough; without bytes when its program
    /// does not answer.
    virtual void read(const std::string& type, std::size_t limit, Read use) = 0;
};

/// Decides which of the copied items are read, and reads them. An item that is replaced or
/// withdrawn while it is read is dropped, because the content may be that of the next one. Knows
/// nothing of display servers; used on the thread of their connection.
class ClipFollower {
public:
    using Copied = std::function<void(CopiedItem)>;
    /// Monotonic time in seconds.
    using Seconds = std::function<double()>;

    /// The functions are called on the thread of the connection.
    struct Setup {
        /// A value of `memoryExcludedApps`.
        std::string excluded;
        Copied copied;
        Seconds seconds = monotonicSeconds;
    };
    explicit ClipFollower(Setup setup) : uses(std::move(setup)) {}

    struct Item {
        std::unique_ptr<OfferedItem> content;
        ClipOrigin origin;
        /// True when a clipboard keeper, or a program that is not known, offers it.
        bool mayBeKeeper = false;
        /// True for an item that was on the clipboard before it was watched. Only its types are
        /// read: they show whether a program has marked it as private.
        bool isOld = false;
    };

    /// Another item is on the clipboard.
    void replace(Item item);
    /// This program has replaced the item.
    void drop();
    /// The program that offered the item has ended or emptied the clipboard.
    void withdraw();

private:
    void decide(const std::optional<ClipTypeNames>& types);
    void readNext();
    void finish(const std::optional<ClipTypeNames>& typesNow);

    const Setup uses;
    MarkedClipGuard guard;
    /// Without content when there is nothing to read.
    Item current;
    /// Absent until they are known.
    std::optional<ClipTypeNames> types;
    ClipContents contents;
};

} // namespace tidemark
