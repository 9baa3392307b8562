#pragma once

namespace tidemark {

/// Throws `Error` when this process can't open `count` further files (RLIMIT_NOFILE). Libraries end
/// the process without a word of their own when a file that they can't do without fails to open.
void requireFreeDescriptors(int count);

} // namespace tidemark
