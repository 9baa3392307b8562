#include "core/presentation/Toolbar.h"

#include "core/presentation/SystemWords.h"

namespace tidemark {

using systemWords::shown;

std::vector<ToolbarAction> toolbarActions(const ToolbarState& state) {
    using enum ToolbarCommand;
    return {
        {checkNow, "Check Now",
         state.isChecking ? "Checking for changes…" : shown("Check for changes (⌘R)"),
         "arrow.triangle.2.circlepath", state.isRecording && !state.isBusy},
        {changeRecording, state.isRecording ? "Pause" : "Resume",
         state.isRecording ? "Pause recording" : "Resume recording",
         state.isRecording ? "pause.circle" : "play", state.canChangeRecording},
        {exportHistory, "Export", "Export the events in this view", "export", state.canExport},
        {darkMode, "Dark Mode", "Switch between Light Mode and Dark Mode", "sun.max", true,
         state.isDark},
        {settings, "Settings", "Settings", "settings"},
    };
}

} // namespace tidemark
