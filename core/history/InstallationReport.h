#pragma once

#include "core/base/Date.h"
#include "core/base/JsonWriter.h"

#include <string>
#include <string_view>

namespace tidemark {

/// Builds a report of installations in the form that `InstallationHistory::parse` reads.
class InstallationReport {
public:
    InstallationReport();
    InstallationReport(const InstallationReport&) = delete;
    InstallationReport& operator=(const InstallationReport&) = delete;

    /// `isAutomatic` for a package that was installed because others need it.
    void add(std::string_view name, std::string_view version, Date date, bool isAutomatic);
    /// Adds an unreadable entry, which `InstallationHistory::parse` counts as skipped.
    void addUnreadable();
    /// The whole report. Nothing can be added any more.
    std::string finish();

private:
    std::string text;
    json::JsonWriter out;
};

} // namespace tidemark
