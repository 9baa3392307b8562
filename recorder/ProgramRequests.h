#pragma once

#include <functional>
#include <string>

namespace tidemark {

/// What other processes may ask of the program that records, besides commands on the history. An
/// empty function is something that the program can't do. Called on the main thread.
struct ProgramRequests {
    /// Brings the main window forward.
    std::function<void()> showWindow{};
    std::function<void()> showSearch{};
    /// Shows the event with this id in the main window, if it is still there.
    std::function<void(const std::string& eventID)> showEvent{};
    /// Ends the program, so that another one can record with windows. Only of a program without
    /// windows.
    std::function<void()> handOver{};
};

} // namespace tidemark
