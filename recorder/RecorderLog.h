#pragma once

/// The log of the program while it records. It goes to standard error, with level prefixes if that
/// is read by the system journal.
namespace tidemark::recorderLog {

/// From now on, writes all messages that Qt logs on any thread, and ignores SIGPIPE. A slow reader
/// does not block the program, and when the reader closes the pipe only the log ends.
void start();

} // namespace tidemark::recorderLog
