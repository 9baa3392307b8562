#include "tests/support/Observations.h"
#include "tests/support/RecordFiller.h"

namespace tidemark::test {

// Apart from the other builders: filling every record takes a compiler some time.
Journal fullJournal() {
    Journal journal = fullSample<Journal>();
    journal.schemaVersion = Journal::supportedVersion;
    return journal;
}

} // namespace tidemark::test
