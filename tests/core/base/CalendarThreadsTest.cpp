#include "core/base/Calendar.h"

#include <latch>
#include <string>
#include <thread>

#include <gtest/gtest.h>

using namespace tidemark;

TEST(CalendarThreads, ShareTheirPatterns) {
    // So many that both threads add patterns at the same time.
    constexpr int patterns = 1000;
    // ICU makes its static data at the first use. It orders that by atomics, which the sanitizer
    // does not see, since ICU is not built with it.
    EXPECT_EQ(Calendar("GMT").format(Date{0}, "d"), "1");
    std::latch start(2);
    const auto formatAll = [&start] {
        const Calendar calendar("GMT");
        start.arrive_and_wait();
        for (int k = 0; k < patterns; ++k) {
            const std::string number = std::to_string(k);
            EXPECT_EQ(calendar.format(Date{0}, "d '" + number + "'"), "1 " + number);
        }
    };
    std::jthread other(formatAll);
    formatAll();
}
