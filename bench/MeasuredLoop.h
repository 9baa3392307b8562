#pragma once

#include "bench/Report.h"

#include <QCoreApplication>
#include <algorithm>
#include <ctime>
#include <string>

namespace tidemark::bench {

/// Processor time of this thread in seconds.
inline double processorSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// The longest time for which the event loop was blocked: by the clock, which other programs
/// influence, and in processor time.
struct Block {
    double wall = 0;
    double processor = 0;

    template <class Work>
    void measure(Work work) {
        const double start = processorSeconds();
        wall = std::max(wall, seconds(work));
        processor = std::max(processor, processorSeconds() - start);
    }
};

/// Prints both figures; the time by the clock has a bound of 10 ms.
inline void rows(const std::string& what, const Block& block) {
    row("longest block of the loop, " + what, block.wall * 1e3, "ms", 10);
    row("  of it on the processor", block.processor * 1e3, "ms");
}

/// Measures the longest time that handling an event takes.
class MeasuredLoop : public QCoreApplication {
public:
    using QCoreApplication::QCoreApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        bool isHandled = false;
        longest.measure([&] { isHandled = QCoreApplication::notify(receiver, event); });
        return isHandled;
    }
    template <class Condition>
    void runUntil(const Condition& done) {
        while (!done())
            processEvents(QEventLoop::WaitForMoreEvents);
    }

    Block longest;
};

} // namespace tidemark::bench
