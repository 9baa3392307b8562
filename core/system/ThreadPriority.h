#pragma once

namespace tidemark {

/// Lowers the priority of the calling thread for the rest of its life, so that it does not slow
/// down the user's work. One source file per system; does nothing if the system refuses.
void lowerThreadPriority();

} // namespace tidemark
