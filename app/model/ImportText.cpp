#include "app/model/ImportText.h"

namespace tidemark {

std::string importText::initialSuccess(std::size_t newRecords) {
    if (newRecords == 0)
        return "No recent installation records were available. Tidemark will record changes from "
               "now on.";
    return "Added " + std::to_string(newRecords) + " recent installation "
           + (newRecords == 1 ? "record" : "records")
           + " from macOS. This partial history covers the last 7 days; future captures will "
             "reveal new changes.";
}

std::string importText::skipped(std::size_t records) {
    return std::to_string(records) + " malformed records in the macOS report were skipped.";
}

std::string importText::confirm(std::size_t newRecords) {
    return "Import " + std::to_string(newRecords) + (newRecords == 1 ? " Record" : " Records");
}

} // namespace tidemark
