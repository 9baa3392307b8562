#pragma once

namespace tidemark {

/// Makes all threads of the process allocate from at most two heaps. A process that runs for weeks
/// then stays small: with a heap for each thread, every one of them grows to the most memory that
/// any work on it ever needed, and keeps it. Call it before other threads start. One source file
/// per system; does nothing where the system's heaps don't belong to threads.
void limitThreadHeaps();

} // namespace tidemark
