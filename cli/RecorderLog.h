#pragma once

/// The log of the program while it records: on standard error, in the form that the journal of the
/// system reads where that is its reader.
namespace tidemark::recorderLog {

/// Takes what Qt logs, from now on and on any thread. A slow reader holds nothing up, and the loss
/// of the reader ends the log alone: the process ignores SIGPIPE from now on.
void start();

} // namespace tidemark::recorderLog
