#include "app/model/DataFiles.h"

namespace tidemark {

DataFiles DataFiles::below(const std::filesystem::path& applicationSupport) {
    return {applicationSupport / folderName, applicationSupport / "Kelda/journal.json"};
}

} // namespace tidemark
