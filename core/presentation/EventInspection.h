#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <string_view>

namespace tidemark {

/// A button of the inspector.
enum class InspectionCommand {
    copyIdentifier,
    inspectFolderSizes,
    backgroundSettings,
    /// Puts a recorded clip on the clipboard again.
    copyClip,
    /// Pins a clip, or unpins it.
    togglePin,
};

struct InspectionAction {
    InspectionCommand command;
    std::string label;

    bool operator==(const InspectionAction&) const = default;
};

/// All that is known of one event, as the inspector shows it and a terminal prints it: what was
/// observed, and what the observation does not prove. The texts use the terms of the operating
/// system that the program runs on.
struct EventInspection {
    static constexpr std::string_view heading = "About this event";
    static constexpr std::string_view closeDetails = "Close details";
    static constexpr std::string_view before = "Before";
    static constexpr std::string_view after = "After";
    /// Shown in the inspector while no event is selected.
    static constexpr std::string_view placeholder =
        "Select an event to inspect its source, observation interval, and details.";

    std::string title;
    std::string subtitle;
    /// Name of the symbol image.
    std::string symbol;
    std::vector<InspectionSection> sections;
    std::vector<InspectionAction> actions;

    /// `latest` is the newest snapshot, which shows what still exists; null when there is none.
    /// `isStateComparison`: the event is a difference between two snapshots, not a recorded event.
    static EventInspection of(const Event& event, const Snapshot* latest, bool isStateComparison,
                              const Calendar& calendar = Calendar());
};

} // namespace tidemark
