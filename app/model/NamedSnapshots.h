#pragma once

#include "app/model/CaptureFlow.h"
#include "app/model/HistoryScreen.h"

namespace tidemark {

/// Saves snapshots under names: first takes a new capture, the draft, then the user names it. No
/// other capture runs in between. Main thread only.
class NamedSnapshots : public Observable {
    Q_OBJECT

public:
    static constexpr std::size_t longestName = 80;

    /// References must outlive this object.
    struct Setup {
        ModelState& state;
        ObservationFlow& observations;
        CaptureFlow& flow;
        JournalFile& file;
        HistoryScreen& screen;
        Preferences& preferences;
        const TaskScope& tasks;
    };

    explicit NamedSnapshots(const Setup& setup) : used(setup) {}

    /// The capture that is waiting for a name.
    Published<OptionalShared<Snapshot>> snapshotDraft{this};
    /// Why the capture or the save failed.
    Published<std::optional<std::string>> snapshotError{this};

    /// Begins naming and takes the capture. Does nothing while recording is paused or another
    /// operation is running.
    QCoro::Task<void> beginSavedSnapshot();
    /// Takes the capture, and sets `snapshotDraft` or `snapshotError`. Called again when the
    /// user retries after a failure. Does nothing unless naming has begun.
    QCoro::Task<void> prepareSnapshotDraft();
    /// Saves the draft under the name, cut to `longestName` characters, and shows it. Returns false
    /// without a draft, with a blank name, or when saving fails; the draft and the journal are
    /// unchanged then.
    QCoro::Task<bool> saveNamedSnapshot(std::string name);
    /// Ends naming. A running capture is dropped.
    void cancelSavedSnapshot();

    /// Deletes a named snapshot; the history stays. False when it does not exist, another operation
    /// is running, or the save failed, which sets `error` of the state.
    QCoro::Task<bool> deleteSnapshot(Uuid id);

private:
    bool isNaming() const { return naming && used.state.canRecord() && !used.state.isEnding; }

    const Setup used;
    /// From `beginSavedSnapshot` until the draft is saved or dropped.
    std::optional<Operations::Token> naming;
};

} // namespace tidemark
