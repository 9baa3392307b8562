#include "cli/recorder/ImportCommands.h"

#include "app/model/ImportView.h"
#include "core/base/Text.h"

#include <QScopeGuard>
#include <algorithm>

namespace tidemark::importCommands {

namespace {

/// What the system remembers, as the import view would show it.
QCoro::Task<ImportView> look(CommandContext& context) {
    co_await context.model().start();
    context.requireHistory();
    if (!context.state().canRecord())
        throw Error("Recording is paused; tidemark resume takes it up again.");
    auto& imports = context.model().imports();
    const bool read = co_await imports.previewImport();
    // No view is open: nobody waits for the user to choose.
    imports.importPresented = false;
    if (!read)
        throw Error(imports.importError->value_or(anotherOperation));
    co_return ImportView::of(**imports.importPreview, context.arguments.includeRoutine,
                             imports.importedIDs(), false);
}

std::string text(const ImportView& view) {
    std::size_t widest = 0;
    for (const auto& row : view.rows)
        widest = std::max(widest, oneLine(row.name).size());
    std::string out;
    for (const auto& row : view.rows) {
        const std::string name = oneLine(row.name);
        out += "  " + name + std::string(widest + 2 - name.size(), ' ') + oneLine(row.version);
        if (row.isImported)
            out += " – " + std::string(importText::alreadyImported);
        out += "\n";
    }
    for (const auto& notice : {view.notice, view.skippedNotice})
        if (notice)
            out += *notice + "\n";
    return out;
}

} // namespace

QCoro::Task<std::string> preview(CommandContext& context) {
    const ImportView view = co_await look(context);
    std::string out = text(view);
    if (view.canConfirm)
        out += view.confirmLabel + ": tidemark import"
               + (context.arguments.includeRoutine ? " --include-routine" : "") + "\n";
    co_return out;
}

QCoro::Task<std::string> import(CommandContext& context) {
    ImportView view = co_await look(context);
    if (view.newRecords.empty())
        co_return text(view);
    auto records = view.newRecords;
    const auto added = co_await context.model().imports().importHistory(std::move(records));
    if (!added)
        throw Error(context.state().error->value_or(anotherOperation));
    co_return "Added " + std::to_string(*added) + (*added == 1 ? " record" : " records")
        + " to the timeline, on their recorded dates.\n";
}

} // namespace tidemark::importCommands
