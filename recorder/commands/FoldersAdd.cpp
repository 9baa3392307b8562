#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/FolderChange.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct FoldersAddOptions {
    FilePath path;
    std::set<FolderPurpose> purpose;

    static constexpr auto fields() {
        return std::tuple{Option{"path",
                                 &FoldersAddOptions::path,
                                 "The folder",
                                 {.isPositional = true, .isRequired = true}},
                          Option{"purpose", &FoldersAddOptions::purpose,
                                 "What the folder is read for; can be given several times"}};
    }
};

QCoro::Task<std::string> foldersAdd(CommandContext& context, const FoldersAddOptions& options) {
    FolderChange change(context);
    const auto folder = co_await GivenFolder::of(options.path);
    std::vector<std::filesystem::path> added{options.path.path()};
    FolderAccess::PurposesOf purposes = [wanted =
                                             options.purpose](const std::filesystem::path& path) {
        return wanted.empty() ? FolderGrant::suggestedPurposes(path) : wanted;
    };
    try {
        co_await context.folders().add(std::move(added), std::move(purposes));
    } catch (const Error& error) {
        throw Error(oneLine(folder.canonical) + " can't be monitored: " + error.what());
    }
    change.finish();
    co_return "Monitoring " + oneLine(folder.canonical) + ".\n";
}

} // namespace

Command commands::foldersAdd() {
    return makeCommand<FoldersAddOptions, &tidemark::foldersAdd>(
        {
            .name = "folders add",
            .group = CommandGroup::choices,
            .summary = "Monitor a folder",
        },
        {.changesSettings = true});
}

} // namespace tidemark
