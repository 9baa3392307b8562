#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/FolderChange.h"
#include "recorder/Recorder.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

enum class Switch { on, off };

} // namespace

template <>
inline constexpr auto json::rawValues<Switch> =
    std::to_array<json::RawValue<Switch>>({{Switch::on, "on"}, {Switch::off, "off"}});

namespace {

struct FoldersTrackOptions {
    FilePath path;
    FolderPurpose purpose{};
    Switch state{};

    static constexpr auto fields() {
        return std::tuple{Option{"path",
                                 &FoldersTrackOptions::path,
                                 "The folder",
                                 {.isPositional = true, .isRequired = true}},
                          Option{"purpose",
                                 &FoldersTrackOptions::purpose,
                                 "What the folder is read for",
                                 {.isPositional = true, .isRequired = true}},
                          Option{"switch",
                                 &FoldersTrackOptions::state,
                                 "Whether it is read for that",
                                 {.isPositional = true, .isRequired = true}}};
    }
};

QCoro::Task<std::string> foldersTrack(CommandContext& context, const FoldersTrackOptions& options) {
    FolderChange change(context);
    const auto folder = co_await GivenFolder::of(options.path);
    const auto grant = folder.granted(context.folders());
    const bool on = options.state == Switch::on;
    context.folders().setTracking(options.purpose, on, grant.id);
    if (context.folders().message())
        throw Error(*context.folders().message());
    change.finish();
    co_return oneLine(grant.path) + " is " + (on ? "" : "no longer ") + "read for "
        + std::string(rawValue(options.purpose)) + ".\n";
}

} // namespace

Command commands::foldersTrack() {
    return makeCommand<FoldersTrackOptions, &tidemark::foldersTrack>(
        {
            .name = "folders track",
            .group = CommandGroup::choices,
            .summary = "Turn a purpose of a monitored folder on or off",
        },
        {.changesSettings = true});
}

} // namespace tidemark
