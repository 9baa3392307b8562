#include "core/presentation/MenuContent.h"

#include "core/presentation/EventRow.h"
#include "core/presentation/WindowControl.h"
#include "tests/support/HistoryEvents.h"
#include "tests/support/SharedRecords.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

std::string labelsOf(const std::vector<MenuEntry>& menu) {
    std::string text;
    for (const auto& entry : menu)
        text += (entry.kind == MenuEntry::Kind::separator ? "-" : entry.label) + "\n";
    return text;
}

} // namespace

TEST(MenuContent, ShowsTheNewestEventsAndShortensLongTexts) {
    std::string longTitle;
    for (int i = 0; i < 61; ++i)
        longTitle += "é";
    const auto timeline =
        test::shared(test::event(longTitle, 9), test::event("5", 8), test::event("4", 7),
                     test::event("3", 6), test::event("2", 5), test::event("1", 4));
    const auto history = test::shared(test::memoryEvent("clip", 9, MemoryRecord::Kind::clipboard),
                                      test::memoryEvent("file", 8, MemoryRecord::Kind::fileOpened));
    const std::string cut = longTitle.substr(0, longTitle.size() - 4) + "…";
    EXPECT_EQ(labelsOf(menuContent({"Recording", true, true, timeline, history})),
              "Recording\n-\nSearch history · Ctrl+Shift+Space\n-\nRECENT ACTIVITY\n" + cut
                  + "\n5\n4\n3\n2\nView all\n-\nCLIPBOARD\nclip\n-\nSearch History…\n"
                    "Open Timeline\nOpen Tidemark\n-\nPause recording\nQuit Tidemark\n"
                    "History stays on your computer\n");
    const auto empty = menuContent({"Paused", false, false, {}, {}, std::nullopt});
    EXPECT_NE(labelsOf(empty).find(
                  "Paused\n-\nRECENT ACTIVITY\nRecorded changes will appear here after an "
                  "observation.\n-\nSearch History…\n"),
              std::string::npos);
    EXPECT_NE(labelsOf(menuContent({"", true, true, {}, {}, "Meta+S"}))
                  .find("-\nSearch history · Meta+S\n-\n"),
              std::string::npos);
    EXPECT_FALSE(
        std::ranges::find(empty, MenuEntry::Kind::changeRecording, &MenuEntry::kind)->isEnabled);
}

TEST(EventRow, ReadsAsASentence) {
    Event event = test::event("Line\nfeed", 86'400 + 60);
    event.subtitle = "1\u2028→ 2";
    event.intervalStart = Date{0};
    event.importance = Importance::routine;
    const Calendar calendar("UTC");
    EXPECT_EQ(EventRow::of(event, calendar).accessibleText,
              "Line\uFFFDfeed, 1\uFFFD→ 2, 1 Jan 00:00 – 00:01");
    EXPECT_EQ(dayHeading(Date{0}, event.timestamp, calendar), "Yesterday");
    EXPECT_EQ(dayHeading(Date{86'400}, event.timestamp, calendar), "Today");
    EXPECT_EQ(dayHeading(Date{-86'400}, event.timestamp, calendar), "Sunday, 31 December 2000");
}

TEST(WindowControl, SelectsAllForAnUnknownRange) {
    for (const auto& [range, selected] :
         {std::pair{"week", "7 days"}, {"custom", "Custom: 3 days"}, {"sometime", "All history"}})
        for (const auto& option : windowOptions(range, 3))
            EXPECT_EQ(option.isSelected, option.label == selected) << option.label;
}
