#pragma once

namespace tidemark {

/// Throws `Error` when this process can't open `count` further files (RLIMIT_NOFILE). Call it
/// before using libraries that abort without a message when they can't open a file.
void requireFreeDescriptors(int count);

} // namespace tidemark
