#pragma once

#include <functional>
#include <thread>

namespace tidemark {

/// Runs `work` on a thread of its own. Throws `Error` when the system can't start another thread,
/// as at the limit of a user's processes and threads (RLIMIT_NPROC).
std::thread startThread(std::function<void()> work);

} // namespace tidemark
