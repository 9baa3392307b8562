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
    /// Absent for what is no switch.
    std::optional<bool> isOn{};

    bool operator==(const ToolbarAction&) const = default;
};

/// What the toolbar is made of.
struct ToolbarState {
    /// Something runs that no capture may begin beside.
    bool isBusy = false;
    bool isChecking = false;
    bool isRecording = true;
    bool canChangeRecording = true;
    /// There is something in the list, and nothing is being compared.
    bool canExport = false;
    bool isDark = false;
};

std::vector<ToolbarAction> toolbarActions(const ToolbarState& state);

} // namespace tidemark
