#pragma once

#include <functional>

namespace tidemark {

/// What other processes may ask of the program that records, besides commands on the history. An
/// empty function is something that the program can't do. Called on the main thread.
struct ProgramRequests {
    /// Brings the main window forward.
    std::function<void()> showWindow{};
    std::function<void()> showSearch{};
    /// Ends the program, so that another one can record with windows. Only of a program without
    /// windows.
    std::function<void()> handOver{};
};

} // namespace tidemark
