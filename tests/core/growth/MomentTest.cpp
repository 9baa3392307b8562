#include "core/growth/Moment.h"

#include "core/base/Error.h"
#include "tests/core/growth/GrowthRecords.h"
#include "tests/support/HistoryEvents.h"

#include <algorithm>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace tidemark;
using test::day;
using test::hour;
using test::sized;
using test::utc;

namespace {

/// 12 January 2001, noon.
constexpr Date now{11 * day + 12 * hour};

/// Captures on 10 January at 10:00 and 20:00 and on 12 January at 9:00 and 11:00.
Journal journal() {
    Journal made;
    made.snapshots =
        test::shared(sized(9 * day + 10 * hour, 1), sized(9 * day + 20 * hour + 0.9, 2),
                     sized(11 * day + 9 * hour, 3), sized(11 * day + 11 * hour, 4));
    made.baselines = {Baseline::named("before the move", made.snapshots[1]),
                      Baseline::named("twice", made.snapshots[0]),
                      Baseline::named("twice", made.snapshots[0]),
                      Baseline::named("2001-01-12", made.snapshots[0])};
    return made;
}

/// The free space of the capture that a text selects, or the error.
std::string found(const std::string& text, const Journal& kept = journal()) {
    try {
        return std::to_string(*momentOf(kept, text, now, utc).snapshot->freeBytes);
    } catch (const Error& error) {
        return error.what();
    }
}

/// The changes from one capture to another, sorted. With `exchanged`, what was added counts as
/// removed and the reverse.
std::vector<std::string> changesBetween(const Moment& from, const Moment& to, bool exchanged) {
    const std::pair<std::string, std::string> opposites[] = {
        {"applicationInstalled", "applicationRemoved"}, {"backgroundAdded", "backgroundRemoved"}};
    std::vector<std::string> lines;
    for (const auto& event : differencesOf({from, to}))
        for (const auto& change : event->changes) {
            std::string line = test::summary({change});
            for (const auto& [added, removed] : opposites)
                if (exchanged && line.starts_with(added))
                    line.replace(0, added.size(), removed);
                else if (exchanged && line.starts_with(removed))
                    line.replace(0, removed.size(), added);
            lines.push_back(std::move(line));
        }
    std::ranges::sort(lines);
    return lines;
}

} // namespace

TEST(Moment, IsSelectedByNameDateAgeAndPlace) {
    const std::pair<const char*, const char*> cases[] = {
        {"before the move", "2"},
        {"2001-01-12", "1"}, // A name goes first.
        {"@0", "4"},
        {"latest", "4"},
        {"@-1", "3"},
        {"@-3", "1"},
        {"today", "4"},
        {"2001-01-10", "2"},
        {"2001-01-10T09:59",
         "No capture of \"2001-01-10T09:59\" or earlier is kept. The oldest one "
         "is @-3 (10 Jan 2001, 10:00:00)."},
        {"2001-01-10T10:00", "1"},
        // This capture was taken 0.9 seconds after the time that is shown of it.
        {"2001-01-10 20:00:00", "2"},
        {"2001-01-10 20:00", "2"},
        {"2001-01-10 19:59:59", "1"},
        {"1h", "4"},
        {"2h", "3"},
        {"1d", "2"},
        {"@-4", "There is no capture \"@-4\": 4 are kept, the oldest is @-3."},
        {"@3", "\"@3\" is no capture: give the name of a snapshot, a date such as 2026-05-31, "
               "yesterday, 7d, or @-3 for the third capture before the latest."},
        {"yesterday",
         "No capture of \"yesterday\" is kept; the last one before it is @-2 (10 Jan 2001, "
         "20:00:00), the first one after it is @-1 (12 Jan 2001, 09:00:00)."},
        {"2001-01-02", "No capture of \"2001-01-02\" is kept; the first one after it is @-3 (10 "
                       "Jan 2001, 10:00:00)."},
        {"9w", "No capture of \"9w\" or earlier is kept. The oldest one is @-3 (10 Jan 2001, "
               "10:00:00)."},
        {"2001-02-31",
         "\"2001-02-31\" is no capture: give the name of a snapshot, a date such as "
         "2026-05-31, yesterday, 7d, or @-3 for the third capture before the latest."},
        {"twice", "Several snapshots are called \"twice\"; give the identifier that tidemark "
                  "snapshot list shows."},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(found(text), expected) << text;
    for (const char* text :
         {"", "@", "@-", "@--1", "@-1x", "-1d", "nand", "@-99999999999999999999"})
        EXPECT_TRUE(found(text).contains("no capture")) << text << ": " << found(text);
    Journal single = journal();
    single.snapshots.erase(single.snapshots.begin() + 1, single.snapshots.end());
    EXPECT_EQ(found("@-1", single), "There is no capture \"@-1\": only @0 is kept.");
    EXPECT_EQ(found("yesterday", single),
              "No capture of \"yesterday\" is kept; the last one before it is @0 (10 Jan 2001, "
              "10:00:00).");
    try {
        momentOf({}, "@0", now, utc);
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "No capture has been taken yet.");
    }
}

RC_GTEST_PROP(Moment, ComparesBothWays, ()) {
    const auto drawn = [] {
        Snapshot made = test::snapshot(*rc::gen::inRange(0u, 1000u));
        for (const std::string name : {"A", "B", "C"}) {
            if (*rc::gen::arbitrary<bool>())
                test::add(made.applications, test::application(name));
            if (*rc::gen::arbitrary<bool>())
                test::add(made.backgroundItems, test::agent(name));
        }
        made.folders = test::shared(
            test::folder("/home/F", *rc::gen::element<std::int64_t>(0, 2 * test::gigabyte)));
        return Shared(std::move(made));
    };
    const Moment a{drawn()};
    const Moment b{drawn()};
    RC_ASSERT(differencesOf({a, a}).empty());
    RC_ASSERT(changesBetween(a, b, true) == changesBetween(b, a, false));
}
