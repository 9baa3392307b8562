#pragma once

#include "app/preferences/JsonPreferences.h"
#include "recorder/RecordedHistory.h"
#include "recorder/RecorderPlaces.h"

namespace tidemark {

/// Reads the stored files in a process that has not locked the data folder. Changes nothing.
class StoredRecords {
public:
    StoredRecords(const RecorderPlaces& where, bool isColoured);

    /// Read-only.
    Preferences& preferences() { return settings; }
    bool colour() const { return isColoured; }
    /// The history, without expired clips. Throws `Error` when the journal can't be read. Blocks.
    RecordedHistory history() const;

private:
    DataFiles files;
    JsonPreferences settings;
    bool isColoured;
};

} // namespace tidemark
