#include "core/growth/StorageSubject.h"

#include "core/base/Error.h"
#include "core/base/Text.h"

#include <algorithm>
#include <map>
#include <set>

namespace tidemark {

namespace {

/// Name by path.
using Names = std::map<std::string, std::string>;

void addFolders(const Snapshot& snapshot, Names& names) {
    for (const auto& folder : snapshot.folders)
        names.insert_or_assign(folder->path, folder->name);
    if (snapshot.folderStorage)
        for (const auto& report : *snapshot.folderStorage)
            names.insert_or_assign(report.path, report.name);
}

/// The latest name of every folder of the history and of the kept snapshots, by its path.
Names folderNames(const GrowthSource& source) {
    Names names;
    for (const auto& series : source.history->series)
        if (series->kind == StorageSubjectKind::folder)
            names.insert_or_assign(series->path, series->name);
    for (const auto& snapshot : source.journal->snapshots)
        addFolders(*snapshot, names);
    return names;
}

Names currentFolders(const Journal& journal) {
    Names names;
    if (!journal.snapshots.empty())
        addFolders(*journal.snapshots.back(), names);
    return names;
}

std::vector<StorageSubject> children(const GrowthSource& source) {
    std::set<std::string> paths;
    std::vector<StorageSubject> all;
    for (const auto& series : source.history->series)
        if (series->kind == StorageSubjectKind::childFolder && paths.insert(series->path).second)
            all.push_back({series->kind, series->path, series->name, false});
    return all;
}

/// The paths of the subjects; "free" for free space.
std::string listed(const std::vector<StorageSubject>& subjects) {
    std::vector<std::string> texts;
    for (const auto& subject : subjects)
        texts.push_back(subject.path.empty() ? "free" : oneLine(subject.path));
    return joined(texts, ", ");
}

bool isNamed(const StorageSubject& subject, std::string_view text) {
    return asciiLowercased(subject.name) == asciiLowercased(text);
}

/// A folder as the user typed it, without slashes at the end.
std::string_view withoutSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    return path;
}

} // namespace

std::vector<StorageSubject> storageSubjects(const GrowthSource& source) {
    const auto current = currentFolders(*source.journal);
    std::vector<StorageSubject> folders;
    for (const auto& [path, name] : folderNames(source))
        folders.push_back({StorageSubjectKind::folder, path, name, current.contains(path)});
    std::ranges::stable_sort(folders, [](const auto& a, const auto& b) {
        return a.isCurrent != b.isCurrent ? a.isCurrent : a.name < b.name;
    });
    StorageSubject free;
    free.isCurrent = !source.journal->snapshots.empty()
                     && source.journal->snapshots.back()->freeBytes.has_value();
    folders.insert(folders.begin(), std::move(free));
    return folders;
}

StorageSubject storageSubject(const GrowthSource& source, std::string_view nameOrPath) {
    if (nameOrPath == "free")
        return storageSubjects(source).front();
    const auto subjects = storageSubjects(source);
    const std::string_view path = withoutSlashes(nameOrPath);
    for (const auto& list : {subjects, children(source)}) {
        std::vector<StorageSubject> found;
        for (const auto& subject : list) {
            if (!subject.path.empty() && subject.path == path)
                return subject;
            if (isNamed(subject, nameOrPath))
                found.push_back(subject);
        }
        if (found.size() == 1)
            return found.front();
        if (found.size() > 1)
            throw Error("Several folders are called \"" + oneLine(nameOrPath)
                        + "\"; give the path of one: " + listed(found) + ".");
    }
    throw Error("No size of \"" + oneLine(nameOrPath)
                + "\" was recorded. There are sizes of: " + listed(subjects) + ".");
}

} // namespace tidemark
