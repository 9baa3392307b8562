#include "app/model/ImportView.h"

#include "app/model/ImportText.h"

namespace tidemark {

std::vector<InstallationRecord> ImportView::candidates(const InstallationPreview& preview,
                                                       bool includeRoutine) {
    auto records = preview.records;
    if (!includeRoutine)
        std::erase_if(records, [](const auto& record) { return record.isRoutine(); });
    return records;
}

ImportView ImportView::of(const InstallationPreview& preview, bool includeRoutine,
                          const std::set<std::string>& importedIDs, bool busy) {
    ImportView view;
    for (auto& record : candidates(preview, includeRoutine)) {
        const bool isImported = importedIDs.contains(record.id());
        view.rows.push_back({record.name, InstallationHistory::event(record).subtitle, isImported});
        if (!isImported)
            view.newRecords.push_back(std::move(record));
    }
    if (view.rows.empty())
        view.notice = preview.records.empty() ? importText::noRecords : importText::onlyRoutine;
    else if (view.newRecords.empty())
        view.notice = importText::allKnown;
    if (preview.skippedRecords > 0)
        view.skippedNotice = importText::skipped(preview.skippedRecords);
    view.confirmLabel = importText::confirm(view.newRecords.size());
    view.canConfirm = !view.newRecords.empty() && !busy;
    return view;
}

} // namespace tidemark
