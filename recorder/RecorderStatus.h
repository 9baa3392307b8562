#pragma once

#include "app/monitors/MonitorStatus.h"
#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// The answer to the command "status": the state of the running recorder, or without one, what is
/// stored.
struct RecorderStatus {
    /// True when a recorder is running.
    bool running = false;
    /// The recording mode: "recording" or "paused".
    std::string mode;
    /// What the recorder does, as a text for the user.
    std::string activity;
    std::string schedule;
    std::optional<Date> lastCapture;
    /// Absent while recording is paused, and with a schedule without times.
    std::optional<Date> nextCapture;
    /// How many captures, events and monitored folders there are.
    std::int64_t snapshots = 0;
    std::int64_t events = 0;
    std::int64_t folders = 0;
    /// Empty when no recorder is running.
    std::vector<MonitorStatus> monitors;
    /// What is wrong, each as a sentence.
    std::vector<std::string> problems;

    static constexpr auto fields() {
        return std::tuple{
            Field{"running", &RecorderStatus::running},
            Field{"mode", &RecorderStatus::mode, Shown},
            Field{"activity", &RecorderStatus::activity, Shown},
            Field{"schedule", &RecorderStatus::schedule, Shown},
            Field{"lastCapture", &RecorderStatus::lastCapture},
            Field{"nextCapture", &RecorderStatus::nextCapture},
            Field{"snapshots", &RecorderStatus::snapshots},
            Field{"events", &RecorderStatus::events},
            Field{"folders", &RecorderStatus::folders},
            Field{"monitors", &RecorderStatus::monitors},
            Field{"problems", &RecorderStatus::problems, Private},
        };
    }
};

/// When the next capture is due, or what must happen before, as a text for the user.
std::string nextCaptureText(const RecorderStatus& status);

} // namespace tidemark
