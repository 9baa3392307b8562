#pragma once

#include "app/base/AppClock.h"
#include "app/base/Published.h"
#include "app/base/TaskScope.h"
#include "app/memory/MemoryCollector.h"
#include "app/ports/Clipboard.h"
#include "app/preferences/Preferences.h"
#include "core/records/MemoryRecord.h"

#include <memory>
#include <stop_token>
#include <string>

namespace tidemark {

/// Records what the user copies, while the setting `memoryClipboard` is on; and puts recorded clips
/// back. Main thread only.
class ClipboardHistory final : public Observable, public MemoryCollector {
    Q_OBJECT

public:
    /// Seconds between two removals of clips that have become too old.
    static constexpr double agePeriod = 60;

    /// `clipboard` is null where the system has none. The other arguments must outlive this object.
    ClipboardHistory(Preferences& preferences, std::unique_ptr<Clipboard> clipboard,
                     AppClock& clock = AppClock::system());
    ~ClipboardHistory() override;

    void start(MemoryHistoryService& history) override;
    void stop() override;

    /// Puts a clip back on the clipboard, in the background. That adds no record. False when there
    /// is no graphical session.
    bool copyAgain(const MemoryRecord& clip);

    /// What is recorded at present and what is not, as sentences.
    const std::string& status() const { return *statusText; }
    /// Why copies can't be recorded in this session, as a sentence; empty when they can. Also empty
    /// before `start`, since only that asks the session.
    const std::string& absence() const { return absenceText; }

private:
    void record(const CopiedItem& item);
    void showAccess(const ClipboardAccess& access);
    QCoro::Task<void> removeOldClips(std::stop_token stop);

    Preferences& preferences;
    const std::unique_ptr<Clipboard> clipboard;
    AppClock& clock;
    /// Null while copies are not recorded.
    MemoryHistoryService* history = nullptr;
    Published<std::string> statusText{this};
    std::string absenceText;
    std::stop_source watching;
    TaskScope tasks;
};

} // namespace tidemark
