#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

#include <QScopeGuard>

namespace tidemark {

namespace {

struct SnapshotSaveOptions {
    std::string name;

    static constexpr auto fields() {
        return std::tuple{Option{"name",
                                 &SnapshotSaveOptions::name,
                                 "Name of the snapshot",
                                 {.isPositional = true, .isRequired = true}}};
    }
};

QCoro::Task<std::string> snapshotSave(CommandContext& context, const SnapshotSaveOptions& options) {
    if (trimmed(options.name).empty())
        throw Error("A snapshot needs a name.");
    co_await context.model().openHistory();
    context.requireFree();
    auto& snapshots = context.model().snapshots();
    const auto close = qScopeGuard([&] { snapshots.cancelSavedSnapshot(); });
    co_await snapshots.beginSavedSnapshot();
    if (const auto& failure = *snapshots.snapshotError)
        throw Error(*failure);
    if (!*snapshots.snapshotDraft)
        throw Error(anotherOperation);
    const bool saved = co_await snapshots.saveNamedSnapshot(options.name);
    if (!saved)
        throw Error(snapshots.snapshotError->value_or(anotherOperation));
    const auto& kept = context.state().journal()->baselines.back();
    co_return "Saved the snapshot \"" + oneLine(kept.name) + "\".\n";
}

} // namespace

Command commands::snapshotSave() {
    return makeCommand<SnapshotSaveOptions, &tidemark::snapshotSave>({
        .name = "snapshot save",
        .group = CommandGroup::history,
        .summary = "Take a capture now and keep it under a name",
    });
}

} // namespace tidemark
