#pragma once

namespace tidemark {

/// Makes the calling thread give way to whatever the user is doing, for the rest of its life. One
/// source file per system; does nothing where the system refuses.
void lowerThreadPriority();

} // namespace tidemark
