#pragma once

#include <functional>
#include <thread>

namespace tidemark {

/// Runs `work` on a thread of its own. Throws `Error` when the system starts no further thread, as
/// at the limit on the processes and threads of a user (RLIMIT_NPROC).
std::thread startThread(std::function<void()> work);

} // namespace tidemark
