#include "core/capture/LaunchDefinition.h"

#include "core/base/Files.h"
#include "core/base/PropertyList.h"

#include <algorithm>

namespace tidemark::LaunchDefinition {

namespace {

using PropertyList::Array;
using PropertyList::Dictionary;

/// The first argument, if all arguments are texts; else null.
const std::string* firstArgument(const Dictionary& list) {
    const auto* arguments = PropertyList::find<Array>(list, "ProgramArguments");
    const auto isText = [](const auto& value) { return value.template as<std::string>(); };
    if (!arguments || arguments->empty() || !std::ranges::all_of(*arguments, isText))
        return nullptr;
    return arguments->front().as<std::string>();
}

const std::string* programOf(const Dictionary& list) {
    const auto* program = PropertyList::find<std::string>(list, "Program");
    return program ? program : firstArgument(list);
}

} // namespace

bool recognises(const FolderEntry& entry) {
    return entry.extension() == "plist";
}

BackgroundDefinition::Result read(const FolderEntry& definition, const MergedFolders&) {
    try {
        return described(definition.read(PropertyList::maximumSize), definition);
    } catch (const FileError&) {
        return std::unexpected(Failure::unreadable);
    }
}

BackgroundDefinition::Result described(std::string_view bytes, const FolderEntry& definition) {
    const auto parsed = PropertyList::parse(bytes);
    const auto* list = parsed ? parsed->as<Dictionary>() : nullptr;
    if (!list)
        return std::unexpected(Failure::unreadable);
    return BackgroundDefinition::item(*list, definition.pathText(), programOf(*list));
}

} // namespace tidemark::LaunchDefinition
