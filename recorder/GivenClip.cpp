#include "recorder/GivenClip.h"

#include "core/base/Error.h"
#include "core/base/Text.h"

#include <string>

namespace tidemark {

namespace {

/// The identifiers of events of the memory history begin with this.
constexpr std::string_view eventPrefix = "memory-";

} // namespace

Shared<MemoryRecord> givenClip(const std::vector<Shared<MemoryRecord>>& clips,
                               std::string_view given) {
    std::string_view id = given;
    if (id.starts_with(eventPrefix))
        id.remove_prefix(eventPrefix.size());
    std::vector<Shared<MemoryRecord>> found;
    for (const auto& clip : clips) {
        if (clip->id == id)
            return clip;
        if (!id.empty() && clip->id.contains(id))
            found.push_back(clip);
    }
    if (found.empty())
        throw Error("No clip has the identifier \"" + oneLine(given) + "\".");
    if (found.size() > 1)
        throw Error(std::to_string(found.size()) + " clips have \"" + oneLine(given)
                    + "\" in their identifiers; give more of it.");
    return found.front();
}

} // namespace tidemark
