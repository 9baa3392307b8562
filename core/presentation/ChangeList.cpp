#include "core/presentation/ChangeList.h"

#include "core/base/Text.h"
#include "core/presentation/InspectionWords.h"
#include "core/system/TrashFolder.h"
#include "core/timeline/MapUnion.h"

#include <algorithm>

namespace tidemark {

namespace {

using inspectionWords::notPresent;
using Lines = std::vector<InspectionChange>;
using Settings = std::map<std::string, std::string>;

std::string versionOf(const Application& app) {
    if (app.build.empty() || app.build == app.version)
        return app.version;
    return app.version + " (" + app.build + ")";
}

std::string countOf(std::int64_t items) {
    return std::to_string(items) + (items == 1 ? " item" : " items");
}

InspectionChange named(std::string name, std::string before, std::string after) {
    return {.subject = std::move(name),
            .before = std::move(before),
            .after = std::move(after),
            .isNamed = true};
}

/// The settings of a definition that may be shown and differ.
Lines settingChanges(const BackgroundItem& before, const BackgroundItem& after) {
    Lines lines;
    forEachInUnion(
        before.safeSettings.value_or(Settings()), after.safeSettings.value_or(Settings()),
        [&](const std::string& key, const std::string* was, const std::string* is) {
            if (!was || !is || *was != *is)
                lines.push_back(named(key, was ? *was : notPresent, is ? *is : notPresent));
        });
    if (before.program != after.program)
        lines.push_back({"Executable", before.program.value_or(notPresent),
                         after.program.value_or(notPresent)});
    return lines;
}

struct LinesOfChange {
    Lines operator()(const change::ApplicationInstalled& installed) const {
        return {named(installed.value->name, notPresent, versionOf(*installed.value))};
    }
    Lines operator()(const change::ApplicationRemoved& removed) const {
        return {named(removed.value->name, versionOf(*removed.value), notPresent)};
    }
    Lines operator()(const change::ApplicationUpdated& updated) const {
        const Application& before = *updated.before;
        const Application& after = *updated.after;
        if (before.version != after.version)
            return {named(after.name, before.version, after.version)};
        return {named(after.name, before.version + " (" + before.build + ")",
                      after.version + " (" + after.build + ")")};
    }
    Lines operator()(const change::BackgroundAdded& added) const {
        return {
            named(added.value->identifier, notPresent, std::string(rawValue(added.value->kind)))};
    }
    Lines operator()(const change::BackgroundRemoved& removed) const {
        return {named(removed.value->identifier, std::string(rawValue(removed.value->kind)),
                      notPresent)};
    }
    Lines operator()(const change::BackgroundChanged& changed) const {
        return settingChanges(*changed.before, *changed.after);
    }
    Lines operator()(const change::FolderSizeChanged& changed) const {
        auto line = named(changed.after->name, byteString(changed.before->bytes),
                          byteString(changed.after->bytes));
        line.isNamed = !TrashFolder::is(changed.after->path);
        return {line};
    }
    Lines operator()(const change::TrashBecameEmpty& emptied) const {
        return {{"Trash", countOf(emptied.previousItemCount), countOf(0)}};
    }
    Lines operator()(const change::FreeDiskSpaceChanged& space) const {
        return {{"Available Disk Space", byteString(space.before), byteString(space.after)}};
    }
    Lines operator()(const change::OperatingSystemChanged& changed) const {
        return {{"Operating System", changed.before.label(), changed.after.label()}};
    }
    Lines operator()(const change::MetadataChanged& changed) const {
        const auto& item = changed.after ? changed.after : changed.before;
        // The value of other kinds is a digest.
        if (!item || item->kind != ObservedMetadata::Kind::homebrew)
            return {};
        return {named(item->name, changed.before ? changed.before->value : notPresent,
                      changed.after ? changed.after->value : notPresent)};
    }
};

} // namespace

std::vector<InspectionChange> changeList(const std::vector<Change>& changes) {
    Lines lines;
    for (const Change& change : changes)
        std::ranges::move(std::visit(LinesOfChange(), change), std::back_inserter(lines));
    return lines;
}

} // namespace tidemark
