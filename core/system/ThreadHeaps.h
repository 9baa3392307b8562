#pragma once

namespace tidemark {

/// Makes all threads of the process allocate from at most two heaps. A process that runs for weeks
/// stays small this way: otherwise each thread has a heap, which grows to the most memory that the
/// thread ever needed at one time and does not shrink again. Call it before other threads start.
/// There is a source file for each system; the function does nothing on systems whose heaps don't
/// belong to threads.
void limitThreadHeaps();

} // namespace tidemark
