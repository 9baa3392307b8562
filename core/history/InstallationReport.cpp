#include "core/history/InstallationReport.h"

#include "core/base/Iso8601.h"
#include "core/records/InstallationRecord.h"

namespace tidemark {

InstallationReport::InstallationReport() : out([this](std::string_view piece) { text += piece; }) {
    out.beginObject();
    out.key("SPInstallHistoryDataType");
    out.beginArray();
}

void InstallationReport::add(std::string_view name, std::string_view version, Date date,
                             bool isAutomatic) {
    const auto write = [this](std::string_view field, std::string_view value) {
        out.key(field);
        out.text(value);
    };
    out.beginObject();
    write("_name", name);
    write("install_version", version);
    write("install_date", *iso8601Text(date));
    write("package_source",
          isAutomatic ? InstallationRecord::automaticSource : InstallationRecord::otherSource);
    out.endObject();
}

void InstallationReport::addUnreadable() {
    out.null();
}

std::string InstallationReport::finish() {
    out.endArray();
    out.endObject();
    out.finish();
    return std::move(text);
}

} // namespace tidemark
