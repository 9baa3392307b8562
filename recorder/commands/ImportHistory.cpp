#include "app/model/ImportText.h"
#include "app/model/ImportView.h"
#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"
#include "recorder/Columns.h"
#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

#include <algorithm>

namespace tidemark {

namespace {

struct ImportHistoryOptions {
    bool includeRoutine = false;
    bool preview = false;

    static constexpr auto fields() {
        return std::tuple{Option{"include-routine", &ImportHistoryOptions::includeRoutine,
                                 "Include silent updates of the system's own data"},
                          Option{"preview", &ImportHistoryOptions::preview,
                                 "Show what would be added, and add nothing"}};
    }
};

/// Reads the installations as the import view shows them.
QCoro::Task<ImportView> look(CommandContext& context, bool includeRoutine) {
    co_await context.model().openHistory();
    context.requireFree();
    auto& imports = context.model().imports();
    const bool wasPresented = imports.importPresented;
    const bool isRead = co_await imports.previewImport();
    // The preview presents the import view, which the command does not need.
    imports.importPresented = wasPresented;
    if (!isRead)
        throw Error(anotherOperation);
    if (const auto& failure = *imports.importError)
        throw Error(*failure);
    co_return ImportView::of(**imports.importPreview, includeRoutine, imports.importedIDs(), false);
}

std::string text(const ImportView& view) {
    std::size_t widest = 0;
    for (const auto& row : view.rows)
        widest = std::max(widest, columns(oneLine(row.name)));
    std::string out;
    for (const auto& row : view.rows) {
        const std::string name = oneLine(row.name);
        out += "  " + name + std::string(widest + 2 - columns(name), ' ') + oneLine(row.version);
        if (row.isImported)
            out += " – " + std::string(importText::alreadyImported);
        out += "\n";
    }
    for (const auto& notice : {view.notice, view.skippedNotice})
        if (notice)
            out += systemWords::shown(*notice) + "\n";
    if (view.notice == importText::onlyRoutine)
        out += "To import them: tidemark import --include-routine\n";
    return out;
}

std::string preview(const ImportView& view, bool includeRoutine) {
    std::string out = text(view);
    if (view.canConfirm)
        out += view.confirmLabel + ": tidemark import"
               + (includeRoutine ? " --include-routine" : "") + "\n";
    return out;
}

QCoro::Task<std::string> imported(CommandContext& context, const ImportHistoryOptions& options) {
    const ImportView view = co_await look(context, options.includeRoutine);
    if (options.preview)
        co_return preview(view, options.includeRoutine);
    if (view.newRecords.empty())
        co_return text(view);
    context.requireFree();
    auto records = view.newRecords;
    const auto added = co_await context.model().imports().importHistory(std::move(records));
    if (!added)
        throw Error(context.state().error->value_or(anotherOperation));
    std::string out = "Added " + std::to_string(*added) + (*added == 1 ? " record" : " records")
                      + " to the timeline, on their recorded dates.\n";
    if (view.skippedNotice)
        out += systemWords::shown(*view.skippedNotice) + "\n";
    co_return out;
}

} // namespace

Command commands::importHistory() {
    return makeCommand<ImportHistoryOptions, &imported>({
        .name = "import",
        .group = CommandGroup::history,
        .summary = "Add installations from the system's own log to the history",
    });
}

} // namespace tidemark
