#pragma once

#include "app/model/CaptureFlow.h"
#include "app/model/HistoryScreen.h"

namespace tidemark {

/// Keeping a snapshot under a name of the user: first a fresh capture, the draft, then its name.
/// Between the two no other capture runs. Main thread only.
class NamedSnapshots : public Observable {
    Q_OBJECT

public:
    static constexpr std::size_t longestName = 80;

    /// All of these outlive this.
    struct Setup {
        ModelState& state;
        ObservationFlow& observations;
        CaptureFlow& flow;
        JournalFile& file;
        HistoryScreen& screen;
        Preferences& preferences;
        const TaskScope& tasks;
    };

    explicit NamedSnapshots(const Setup& setup)
        : state(setup.state), observations(setup.observations), flow(setup.flow), file(setup.file),
          screen(setup.screen), preferences(setup.preferences), tasks(setup.tasks) {}

    /// What is waiting for a name.
    Published<OptionalShared<Snapshot>> snapshotDraft{this};
    /// Why the capture or the save of this step failed.
    Published<std::optional<std::string>> snapshotError{this};

    /// Opens the step and captures. Does nothing while anything else runs.
    QCoro::Task<void> beginSavedSnapshot();
    /// Captures a fresh draft; also the retry after a failure.
    QCoro::Task<void> prepareSnapshotDraft();
    /// Keeps the draft under a name of at most `longestName` characters, and shows it. True when it
    /// was saved; otherwise the step stays open with its draft, and the journal is as it was.
    QCoro::Task<bool> saveNamedSnapshot(std::string name);
    /// Closes the step. A capture that still runs is dropped at its end.
    void cancelSavedSnapshot();

    /// Takes the name away, and the copy that was kept under it; the history stays. True when that
    /// was saved; false when there is no such snapshot, while anything else runs, or when it could
    /// not be saved, which `error` of the state tells.
    QCoro::Task<bool> deleteSnapshot(Uuid id);

private:
    bool isNaming() const { return naming && state.canRecord() && !state.isEnding; }

    ModelState& state;
    ObservationFlow& observations;
    CaptureFlow& flow;
    JournalFile& file;
    HistoryScreen& screen;
    Preferences& preferences;
    const TaskScope& tasks;
    /// From `beginSavedSnapshot` until the draft is saved or given up.
    std::optional<Operations::Token> naming;
};

} // namespace tidemark
