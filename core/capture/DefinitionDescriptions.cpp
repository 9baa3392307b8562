#include "core/capture/DefinitionDescriptions.h"

#include "core/capture/BackgroundDefinition.h"
#include "core/timeline/DefinitionComparison.h"

#include <algorithm>
#include <span>

namespace tidemark::DefinitionDescriptions {

namespace {

std::string labelOf(std::string_view key) {
    using Label = BackgroundDefinition::Label;
    for (const auto table : {std::span<const Label>(BackgroundDefinition::labels),
                             std::span<const Label>(BackgroundDefinition::furtherLabels)})
        if (const auto row = std::ranges::find(table, key, &Label::key); row != table.end())
            return std::string(row->text);
    return std::string(key);
}

const std::string* setting(const BackgroundItem& item, const std::string& key) {
    if (!item.safeSettings)
        return nullptr;
    const auto found = item.safeSettings->find(key);
    return found == item.safeSettings->end() ? nullptr : &found->second;
}

} // namespace

std::vector<std::string> changeDescriptions(const BackgroundItem& before,
                                            const BackgroundItem& after) {
    std::vector<std::string> lines;
    for (const auto& key : DefinitionComparison::changedKeys(before, after)) {
        const auto* was = setting(before, key);
        const auto* is = setting(after, key);
        if (was && is && *was != *is)
            lines.push_back(labelOf(key) + ": " + *was + " → " + *is);
        else
            lines.push_back(labelOf(key) + " changed");
    }
    return lines;
}

} // namespace tidemark::DefinitionDescriptions
