#include "recorder/SnapshotCommands.h"

#include "core/base/Text.h"
#include "recorder/SnapshotReading.h"

#include <QScopeGuard>

namespace tidemark::snapshotCommands {

QCoro::Task<std::string> save(CommandContext& context) {
    if (trimmed(context.arguments.name).empty())
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
    const bool saved = co_await snapshots.saveNamedSnapshot(context.arguments.name);
    if (!saved)
        throw Error(snapshots.snapshotError->value_or(anotherOperation));
    const auto& kept = context.state().journal().baselines.back();
    co_return "Saved the snapshot \"" + oneLine(kept.name) + "\".\n";
}

QCoro::Task<std::string> remove(CommandContext& context) {
    co_await context.model().openHistory();
    context.requireHistory();
    const auto& baseline =
        snapshotReading::named(context.state().journal(), context.arguments.name);
    const std::string name = baseline.name;
    if (context.state().busy())
        throw Error(anotherOperation);
    const bool deleted = co_await context.model().snapshots().deleteSnapshot(baseline.id);
    if (!deleted)
        throw Error(context.state().error->value_or(anotherOperation));
    co_return "Deleted the snapshot \"" + oneLine(name) + "\"; the history stays.\n";
}

} // namespace tidemark::snapshotCommands
