#pragma once

/// The log of the program while it records. It goes to standard error, with level prefixes if that
/// is read by the system journal.
namespace tidemark::recorderLog {

/// Handles all messages that Qt logs from now on, on any thread. A slow reader does not block the
/// program, and when the reader closes the pipe only the log ends: the process ignores SIGPIPE from
/// now on.
void start();

} // namespace tidemark::recorderLog
