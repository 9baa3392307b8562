#pragma once

#include "app/preferences/JsonPreferences.h"
#include "recorder/RecordedHistory.h"
#include "recorder/RecorderPlaces.h"

namespace tidemark {

/// What is on disk, for a process that reads it without having the data folder. Changes nothing.
class StoredRecords {
public:
    StoredRecords(const RecorderPlaces& where, bool withColour);

    /// Opened to read: setting one fails.
    Preferences& preferences() { return settings; }
    bool colour() const { return isColoured; }
    /// The history, without clips that are too old. Throws `Error` when the journal can't be read.
    /// Blocks.
    RecordedHistory history() const;

private:
    DataFiles files;
    JsonPreferences settings;
    bool isColoured;
};

} // namespace tidemark
