#include "core/timeline/ObservationCoverage.h"

#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

Snapshot taken(double time, std::optional<double> interval, std::vector<std::string> issues = {}) {
    Snapshot made = test::snapshot(1);
    made.timestamp = Date{time};
    made.expectedCaptureInterval = interval;
    made.coverage.issues = std::move(issues);
    return made;
}

/// Gaps as "start-end", with "…" for an ongoing one, then issues as "time message".
std::string summary(const ObservationCoverageReport& report) {
    std::string text;
    for (const auto& gap : report.gaps)
        text += std::to_string(std::lround(gap.start.secondsSince2001)) + "-"
                + std::to_string(std::lround(gap.end.secondsSince2001))
                + (gap.isOngoing ? "… " : " ");
    for (const auto& issue : report.accessIssues)
        text += std::to_string(std::lround(issue.timestamp.secondsSince2001)) + " " + issue.message
                + " ";
    return text;
}

std::string summary(std::vector<Snapshot> snapshots, double after, double through) {
    return summary(ObservationCoverageReport::build(test::shared(std::move(snapshots)), Date{after},
                                                    Date{through}));
}

} // namespace

TEST(ObservationCoverage, ReportsThatCapturesResumed) {
    using Interval = std::optional<double>;
    const std::tuple<Interval, Interval, double, bool> cases[] = {
        {3600, 3600, 7200, false},   {3600, 3600, 7201, true}, {600, 600, 1500, false},
        {600, 600, 1501, true},      {300, 3600, 7200, false}, {3600, 300, 7201, true},
        {900, 900, 1801, true},      {900, 900, 1800, false},  {{}, 600, 1e9, false},
        {600, {}, 1e9, false},       {0, 600, 1e9, false},     {600, -1, 1e9, false},
        {600, INFINITY, 1e9, false}, {1e308, 600, 1e9, false}, {600, 600, -1e9, false},
    };
    for (const auto& [from, to, apart, resumed] : cases) {
        SCOPED_TRACE(apart);
        const auto event = ObservationCoverage::completedEvent(taken(0, from), taken(apart, to));
        ASSERT_EQ(event.has_value(), resumed);
        if (!event)
            continue;
        Event expected;
        const std::string id = taken(0, {}).id.text();
        expected.id = "coverage-";
        expected.id.append(id).append("-").append(id);
        expected.timestamp = Date{apart};
        expected.title = "Captures Resumed";
        expected.subtitle = "An extended interval without saved captures";
        expected.category = EventCategory::system;
        expected.symbol = "clock.badge.checkmark";
        expected.observationGap = ObservationGap{Date{0}, Date{apart}, false};
        EXPECT_EQ(*event, expected);
    }
}

TEST(ObservationCoverage, ReportsGapsAndIssuesOfAPeriod) {
    const double day = 86'400;
    EXPECT_EQ(summary({}, 0, 1e9), "");
    EXPECT_EQ(summary({taken(0, {}), taken(day, {})}, -1, day), "");
    EXPECT_EQ(summary({taken(0, {}), taken(day + 1, {})}, -1, day + 1), "0-86401 ");
    EXPECT_EQ(summary({taken(0, 600), taken(1501, 1e6)}, -1, 1501), "0-1501 ");
    EXPECT_EQ(summary({taken(0, 600)}, -1, 1500), "");
    EXPECT_EQ(summary({taken(0, 600)}, -1, 1501), "0-1501… ");
    EXPECT_EQ(summary({taken(0, -5)}, -1, day), "") << "an invalid interval counts as a day";
    EXPECT_EQ(summary({taken(9000, 600), taken(0, 600)}, 4000, 9000), "4000-9000 ")
        << "sorted and limited to the period";
    EXPECT_EQ(summary({taken(0, 600), taken(9000, 600)}, 9000, 9000), "")
        << "a gap that ends at the start of the period";
    EXPECT_EQ(summary({taken(0, 600), taken(9000, 600)}, 100, 8000), "100-8000… ")
        << "later snapshots are ignored";
    EXPECT_EQ(
        summary({taken(0, 600, {"old"}), taken(10, 600, {"b", "a", "b"}), taken(20, 600, {"a"})},
                10, 20),
        "10 a 10 b 20 a ");
    EXPECT_EQ((ObservationGap{Date{0}, Date{1.25}, true}.id()), "978307200.0-978307201.25");
    EXPECT_EQ((ObservationAccessIssue{Date{0.5}, "No access"}.id()), "978307200.5-No access");
}
