#include "core/activity/SettledTransition.h"

#include <cmath>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

/// Runs a script with a delay of two seconds: "B@0" receives B at 0, "settle@2" settles, "reset"
/// resets. Returns the result of each settling, "-" for none, then the baseline.
std::string played(const std::string& script, std::optional<std::string> baseline = "A") {
    SettledTransition<std::string> tracker(2, std::move(baseline));
    std::istringstream steps(script);
    std::string result;
    for (std::string step; steps >> step;) {
        const auto at = step.find('@');
        const std::string word = step.substr(0, at);
        const Date time{at == std::string::npos ? 0 : std::stod(step.substr(at + 1))};
        if (word == "reset") {
            tracker.reset();
        } else if (word != "settle") {
            tracker.receive(word, time);
        } else if (const auto change = tracker.settle(time)) {
            result += change->before + change->after + "@"
                      + std::to_string(std::lround(change->firstObserved.secondsSince2001)) + " ";
        } else {
            result += "- ";
        }
    }
    return result + tracker.baseline().value_or("none");
}

} // namespace

TEST(SettledTransition, ReportsOnlyValuesThatLastForTheDelay) {
    const std::pair<const char*, const char*> cases[] = {
        {"settle@5", "- A"},
        {"B@0 settle@1.999 settle@2 settle@9", "- AB@0 - B"},
        // Repeating the candidate does not restart the wait; another value does.
        {"B@0 B@1 settle@2", "AB@0 B"},
        {"B@0 C@1 settle@2 settle@3", "- AC@1 C"},
        {"B@0 C@1 B@2 settle@3 settle@4", "- AB@2 B"},
        // Returning to the baseline in time cancels the change.
        {"B@0 A@1 settle@10 B@10 settle@11", "- - A"},
        {"B@0 settle@2 A@3 settle@5", "AB@0 BA@3 A"},
        // The clock is set back.
        {"B@5 settle@1 settle@7", "- AB@5 B"},
        {"B@0 reset settle@9", "- none"},
        {"reset B@0 settle@1 settle@2 C@3 settle@4 settle@5", "- - - BC@3 C"},
    };
    for (const auto& [script, result] : cases)
        EXPECT_EQ(played(script), result) << script;
    EXPECT_EQ(played("A@0 B@1 settle@2 settle@3 A@4 settle@6", std::nullopt), "- - BA@4 A");
}
