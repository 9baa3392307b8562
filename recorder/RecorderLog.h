#pragma once

/// The log of the program while it records. It goes to standard error. Where that is read by the
/// system journal, which other users can read, each line has its level and no private details
/// (`publicText`).
namespace tidemark::recorderLog {

/// From now on, writes all messages that Qt logs on any thread, and ignores SIGPIPE. A slow reader
/// does not block the program, and when the reader closes the pipe only the log ends.
void start();

/// Whether the stream is the one that the system journal reads: `announced` is the value of
/// JOURNAL_STREAM, device and inode of that stream (sd-daemon(3)), or null.
bool isJournal(int stream, const char* announced);

} // namespace tidemark::recorderLog
