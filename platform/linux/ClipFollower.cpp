#include "platform/linux/ClipFollower.h"

#include "core/memory/ClipTypes.h"

namespace tidemark {

void ClipFollower::replace(Item item) {
    drop();
    if (!clipRules::admits(item.origin, uses.excluded)) {
        // A clipboard keeper may offer the excluded item again under its own name.
        guard.noteMarked(uses.seconds());
        return;
    }
    current = std::move(item);
    current.content->readTypes([this](const auto& read) { decide(read); });
}

void ClipFollower::drop() {
    current = {};
    types.reset();
    contents.clear();
}

void ClipFollower::withdraw() {
    const bool mayHaveBeenMarked = current.content && !types;
    drop();
    if (mayHaveBeenMarked)
        guard.noteMarked(uses.seconds());
    else
        guard.noteEnd(uses.seconds());
}

void ClipFollower::decide(const std::optional<ClipTypeNames>& read) {
    if (!read || clipTypes::areMarked(*read)) {
        guard.noteMarked(uses.seconds());
        return drop();
    }
    // Some programs empty the clipboard by offering nothing.
    if (read->empty()) {
        guard.noteEnd(uses.seconds());
        return drop();
    }
    if (current.isOld || !guard.admits(uses.seconds(), current.mayBeKeeper))
        return drop();
    types = read;
    readNext();
}

void ClipFollower::readNext() {
    const auto next = clipRules::nextRead(*types, contents);
    if (!next && !clipRules::keeps(contents))
        return drop();
    if (!next)
        return current.content->readTypes([this](const auto& read) { finish(read); });
    current.content->read(next->type, next->limit, [this, part = next->part](ClipData data) {
        contents[part] = std::move(data);
        readNext();
    });
}

void ClipFollower::finish(const std::optional<ClipTypeNames>& typesNow) {
    // Some programs mark their items a moment after they offer them.
    if (!typesNow || clipTypes::areMarked(*typesNow)) {
        guard.noteMarked(uses.seconds());
        return drop();
    }
    CopiedItem item{std::move(contents), std::move(current.origin)};
    drop();
    uses.copied(std::move(item));
}

} // namespace tidemark
