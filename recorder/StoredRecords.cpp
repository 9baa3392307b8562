#include "recorder/StoredRecords.h"

#include "app/preferences/PreferenceKeys.h"

namespace tidemark {

StoredRecords::StoredRecords(const RecorderPlaces& where, bool isColoured)
    : files(where.files), settings(where.settings, JsonPreferences::Opening::toRead),
      isColoured(isColoured) {}

RecordedHistory StoredRecords::history() const {
    return RecordedHistory::load(files, read(settings, preferenceKeys::memoryClipboardDays));
}

} // namespace tidemark
