#include "app/capture/FolderCalls.h"

#include "core/base/StartThread.h"
#include "core/system/ThreadPriority.h"

#include <condition_variable>
#include <mutex>
#include <set>

namespace tidemark {

struct FolderCalls::State {
    std::mutex mutex;
    std::condition_variable_any ended;
    /// The folders of calls that did not end in time; no second thread is started for them.
    std::multiset<std::filesystem::path> hanging;
};

FolderCalls::FolderCalls(std::chrono::milliseconds longest)
    : longest(longest), state(std::make_shared<State>()) {}

bool FolderCalls::endsInTime(const std::filesystem::path& folder, std::function<void()> work,
                             std::function<void()> whenLate, const std::stop_token& stop) const {
    enum class Stage { running, ended, leftBehind };
    const auto stage = std::make_shared<Stage>(Stage::running);

    std::unique_lock lock(state->mutex);
    if (stop.stop_requested() || state->hanging.contains(folder))
        return false;
    // Not a thread of the pool, which would run out of threads.
    startThread([shared = state, stage, folder, work = std::move(work),
                 whenLate = std::move(whenLate)] {
        lowerThreadPriority();
        work();
        std::unique_lock own(shared->mutex);
        if (*stage == Stage::leftBehind) {
            shared->hanging.erase(shared->hanging.find(folder));
            own.unlock();
            return whenLate();
        }
        *stage = Stage::ended;
        shared->ended.notify_all();
    }).detach();

    state->ended.wait_for(lock, stop, longest, [&] { return *stage == Stage::ended; });
    if (*stage == Stage::ended)
        return true;
    *stage = Stage::leftBehind;
    state->hanging.insert(folder);
    return false;
}

} // namespace tidemark
