#pragma once

#include "app/model/OperationSet.h"

#include <array>

namespace tidemark {

/// Which running operations prevent others from beginning.
namespace exclusions {

using enum Operation;

struct Row {
    Operation beginning;
    /// The operations that must not run while it begins. An operation also excludes itself.
    OperationSet excluded;
};

inline constexpr OperationSet captures{capturing, capturingInSetup};
inline constexpr OperationSet saves{saving, savingDraft};
inline constexpr OperationSet checks{checkingFolders, checkingAfterReturn};
inline constexpr OperationSet folderChanges{choosingFolders, managingFolders};
/// Operations that need an unchanged journal until they end, or load the machine like a capture.
inline constexpr OperationSet exclusive =
    captures.with(saves).with(checks).with({opening, importing, naming, drafting});

/// One row for each operation, in their order.
inline constexpr auto table = std::to_array<Row>({
    {opening, {}},
    {capturing, exclusive.with(folderChanges)},
    {capturingInSetup, exclusive},
    {saving, OperationSet::all()},
    {importing, OperationSet::all()},
    {naming, OperationSet::all()},
    {drafting, captures.with(saves).with(opening)},
    {savingDraft, saves.with({opening, drafting})},
    {choosingFolders, {}},
    {managingFolders, {}},
    {checkingFolders, captures.with(saves).with(checks)},
    {checkingAfterReturn, exclusive},
    {switchingRecording, saves.with({opening, importing, naming, drafting})},
});

/// The operations that prevent `operation` from beginning.
constexpr OperationSet of(Operation operation) {
    return table[std::to_underlying(operation)].excluded.with(operation);
}

static_assert([] {
    // The table is indexed by operation.
    for (std::size_t i = 0; i < table.size(); ++i)
        if (std::to_underlying(table[i].beginning) != i)
            return false;
    return std::to_underlying(switchingRecording) + 1 == table.size();
}());

} // namespace exclusions

} // namespace tidemark
