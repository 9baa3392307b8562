#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/NamedSnapshot.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct SnapshotDeleteOptions {
    std::string name;
    bool yes = false;

    static constexpr auto fields() {
        return std::tuple{Option{"name",
                                 &SnapshotDeleteOptions::name,
                                 namedSnapshotHelp,
                                 {.isPositional = true, .isRequired = true}},
                          Option{"yes", &SnapshotDeleteOptions::yes, "Do not ask"}};
    }
};

QCoro::Task<std::string> snapshotDelete(CommandContext& context,
                                        const SnapshotDeleteOptions& options) {
    co_await context.model().openHistory();
    context.requireHistory();
    const auto baseline = namedSnapshot(*context.state().journal(), options.name);
    if (!context.state().mayBegin(Operation::saving))
        throw Error(anotherOperation);
    const bool deleted = co_await context.model().snapshots().deleteSnapshot(baseline.id);
    if (!deleted)
        throw Error(context.state().error->value_or(anotherOperation));
    co_return "Deleted the snapshot \"" + oneLine(baseline.name) + "\"; the history stays.\n";
}

std::optional<std::string> question(const SnapshotDeleteOptions& options) {
    if (options.yes)
        return std::nullopt;
    return "Delete the snapshot \"" + oneLine(options.name) + "\"?";
}

} // namespace

Command commands::snapshotDelete() {
    return makeCommand<SnapshotDeleteOptions, &tidemark::snapshotDelete>(
        {
            .name = "snapshot delete",
            .group = CommandGroup::history,
            .summary = "Delete a named snapshot; the history stays",
        },
        {.question = question});
}

} // namespace tidemark
