#include "tests/support/Observations.h"
#include "tests/support/RecordFiller.h"

namespace tidemark::test {

// In a file of its own, because filling every record takes long to compile.
Journal fullJournal() {
    Journal journal = fullSample<Journal>();
    journal.schemaVersion = Journal::supportedVersion;
    return journal;
}

} // namespace tidemark::test
