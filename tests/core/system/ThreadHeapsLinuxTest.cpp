#include "core/system/ThreadHeaps.h"

#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/wait.h>

using namespace tidemark;

namespace {

/// Lets eight threads allocate at the same time, and returns the number of heaps after that.
int heapsOfEightThreads() {
    constexpr int count = 8;
    std::barrier all(count);
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < count; ++i)
            threads.emplace_back([&] {
                const auto memory = std::make_unique<char[]>(100);
                all.arrive_and_wait();
            });
    }
    char* report = nullptr;
    std::size_t size = 0;
    std::FILE* stream = ::open_memstream(&report, &size);
    ::malloc_info(0, stream);
    std::fclose(stream);
    int heaps = 0;
    for (std::string_view rest = report; rest.contains("<heap nr"); ++heaps)
        rest.remove_prefix(rest.find("<heap nr") + 1);
    std::free(report);
    return heaps;
}

} // namespace

TEST(ThreadHeaps, AreAtMostTwo) {
    // In a process of its own, where no earlier test has left heaps.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            limitThreadHeaps();
            std::exit(heapsOfEightThreads());
        },
        [](int status) { return WIFEXITED(status) && WEXITSTATUS(status) <= 2; }, "");
}
