#include "tests/support/Observations.h"

#include <array>
#include <cstdio>

namespace tidemark::test {

Application application(const std::string& name, const std::string& version,
                        const std::string& build) {
    return {"org.example." + name, name, version, build, "/Applications/" + name + ".app", {}};
}

BackgroundItem agent(const std::string& label) {
    BackgroundItem item;
    item.identifier = label;
    item.path = "/Library/LaunchAgents/" + label + ".plist";
    return item;
}

BackgroundItem agentInside(const std::string& name) {
    BackgroundItem item = agent("org.example." + name + ".helper");
    item.program = application(name).path + "/Contents/helper";
    item.associatedAppID = application(name).bundleID;
    item.association = "Executable inside application bundle";
    return item;
}

FolderSize folder(const std::string& path, std::int64_t bytes,
                  std::map<std::string, std::int64_t> breakdown) {
    FolderSize size;
    size.path = path;
    size.name = lastPathComponent(path);
    size.bytes = bytes;
    size.breakdown.emplace(std::move(breakdown));
    return size;
}

FolderSize trash(std::int64_t bytes, std::optional<std::int64_t> itemCount) {
    FolderSize size = folder("/home/.Trash", bytes);
    size.itemCount = itemCount;
    return size;
}

ObservedMetadata metadata(ObservedMetadata::Kind kind, const std::string& path,
                          const std::string& value) {
    ObservedMetadata item;
    item.kind = kind;
    item.path = path;
    item.name = lastPathComponent(path);
    item.value = value;
    return item;
}

MetadataReport report(const std::string& scope, std::vector<ObservedMetadata> items,
                      bool complete) {
    return {scope, Shared(std::move(items)), complete, {}};
}

Snapshot snapshot(unsigned number) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "00000000-0000-4000-8000-%012u", number);
    Snapshot made;
    made.id = *Uuid::parse(text.data());
    made.timestamp = Date{60.0 * number};
    made.coverage.applicationRoots.emplace({"/Applications"});
    made.coverage.backgroundRoots.emplace({"/Library/LaunchAgents"});
    return made;
}

namespace {

std::string subject(const change::MetadataChanged& changed) {
    return (changed.before ? changed.before->value : "none") + " > "
           + (changed.after ? changed.after->value : "none");
}
std::string subject(const change::OperatingSystemChanged& changed) {
    return changed.before.label() + " > " + changed.after.label();
}
std::string subject(const change::FreeDiskSpaceChanged& changed) {
    return std::to_string(changed.before) + " > " + std::to_string(changed.after);
}
std::string subject(const change::TrashBecameEmpty& emptied) {
    return emptied.path + " " + std::to_string(emptied.previousItemCount);
}
template <class T>
std::string subject(const change::Single<T>& change) {
    return change.value->path;
}
template <class T>
std::string subject(const change::BeforeAfter<T>& change) {
    return change.before->path + (change.before->path == change.after->path ? "" : " differs");
}

} // namespace

std::string summary(const std::vector<Change>& changes) {
    std::string lines;
    for (const Change& change : changes)
        std::visit(
            [&]<class Case>(const Case& payload) {
                lines +=
                    (lines.empty() ? "" : "\n") + std::string(Case::tag) + " " + subject(payload);
            },
            change);
    return lines;
}

} // namespace tidemark::test
