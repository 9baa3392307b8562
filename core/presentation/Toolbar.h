#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

enum class ToolbarCommand { checkNow, changeRecording, exportHistory, darkMode, settings };

/// One button of the toolbar.
struct ToolbarAction {
    ToolbarCommand command;
    std::string label;
    /// The tool tip.
    std::string help;
    /// Name of the symbol image.
    std::string symbol;
    bool isEnabled = true;
    /// Absent when the button is not a switch.
    std::optional<bool> isOn{};

    bool operator==(const ToolbarAction&) const = default;
};

/// The state from which the toolbar is made.
struct ToolbarState {
    /// True when a running operation prevents a capture.
    bool isBusy = false;
    bool isChecking = false;
    bool isRecording = true;
    bool canChangeRecording = true;
    /// True when the list has events and no comparison is running.
    bool canExport = false;
    bool isDark = false;
};

std::vector<ToolbarAction> toolbarActions(const ToolbarState& state);

} // namespace tidemark
