#pragma once

#include "core/journal/Journal.h"

#include <string>
#include <vector>

/// Short builders of records for tests. Times are seconds since 2001.
namespace tidemark::test {

/// "/Applications/Name.app" with the identifier "org.example.Name".
Application application(const std::string& name, const std::string& version = "1",
                        const std::string& build = "1");
/// "/Library/LaunchAgents/label.plist".
BackgroundItem agent(const std::string& label);
/// An agent whose program lies inside the bundle of `application(name)`.
BackgroundItem agentInside(const std::string& name);
FolderSize folder(const std::string& path, std::int64_t bytes,
                  std::map<std::string, std::int64_t> breakdown = {});
/// "/home/.Trash".
FolderSize trash(std::int64_t bytes, std::optional<std::int64_t> itemCount = {});
ObservedMetadata metadata(ObservedMetadata::Kind kind, const std::string& path,
                          const std::string& value);
MetadataReport report(const std::string& scope, std::vector<ObservedMetadata> items,
                      bool complete = true);

/// A snapshot that has read "/Applications" and "/Library/LaunchAgents". Its id ends with `number`;
/// it was taken `number` minutes after the start of 2001.
Snapshot snapshot(unsigned number);

/// A journal in which every optional is present and every collection has one element.
Journal fullJournal();

/// Changes as lines such as "applicationInstalled /Applications/A.app".
std::string summary(const std::vector<Change>& changes);

} // namespace tidemark::test
