#include "recorder/LogWriter.h"
#include "tests/support/Pipe.h"

#include <algorithm>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace tidemark;

TEST(LogWriterThreads, LinesOfSeveralThreadsStayWhole) {
    constexpr int lines = 500;
    const std::vector<std::string> texts{"first", "second thread", "third", "the fourth thread"};
    const test::Pipe pipe;
    LogWriter log(pipe.writing.get());
    std::vector<std::jthread> threads;
    for (const auto& text : texts)
        threads.emplace_back([&] {
            for (int count = 0; count < lines; ++count)
                log.write(text);
        });
    threads.clear();
    std::vector<std::string> found;
    for (std::string all = pipe.taken(); all.contains('\n'); all.erase(0, all.find('\n') + 1))
        found.push_back(all.substr(0, all.find('\n')));
    for (const auto& text : texts)
        EXPECT_EQ(std::ranges::count(found, text), lines) << text;
    EXPECT_EQ(std::ssize(found), std::ssize(texts) * lines);
}
