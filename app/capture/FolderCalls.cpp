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
    /// The folder of each abandoned call that is still running. No new call is started for these
    /// folders. A folder with two abandoned calls is contained twice.
    std::multiset<std::filesystem::path> hanging;
};

FolderCalls::FolderCalls(std::chrono::milliseconds longest)
    : longest(longest), state(std::make_shared<State>()) {}

bool FolderCalls::endsInTime(const std::filesystem::path& folder, std::function<void()> work,
                             std::function<void()> whenLate, const std::stop_token& stop) const {
    enum class Stage { running, ended, abandoned };
    const auto stage = std::make_shared<Stage>(Stage::running);

    std::unique_lock lock(state->mutex);
    if (stop.stop_requested() || state->hanging.contains(folder))
        return false;
    // A thread of its own, because calls that hang would use up the threads of the common pool.
    startThread([shared = state, stage, folder, work = std::move(work),
                 whenLate = std::move(whenLate)] {
        lowerThreadPriority();
        work();
        std::unique_lock own(shared->mutex);
        if (*stage == Stage::abandoned) {
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
    *stage = Stage::abandoned;
    state->hanging.insert(folder);
    return false;
}

} // namespace tidemark
