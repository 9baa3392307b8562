#include "recorder/RecorderStatus.h"

#include "recorder/HistoryTime.h"

namespace tidemark {

std::string nextCaptureText(const RecorderStatus& status) {
    if (status.mode == "paused")
        return "Not before recording goes on (tidemark resume)";
    return status.running ? historyTime::moment(status.nextCapture, "Not scheduled")
                          : "Not before a recorder runs (tidemark run)";
}

} // namespace tidemark
