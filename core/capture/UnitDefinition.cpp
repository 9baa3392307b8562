#include "core/capture/UnitDefinition.h"

#include "core/base/Text.h"
#include "core/capture/CommandText.h"
#include "core/capture/TimeSpan.h"
#include "core/capture/UnitName.h"
#include "core/capture/UnitSettings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <span>

namespace tidemark::UnitDefinition {

namespace {

using BackgroundDefinition::Failure;
using CommandText::Quoting;
using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::Value;
using Fragment = UnitFolders::Fragment;
using DropIn = UnitFolders::DropIn;

std::span<const Fragment> fragmentsOf(const UnitFolders& folders, std::string_view name) {
    const auto found = folders.fragments.find(name);
    if (found == folders.fragments.end())
        return {};
    return found->second;
}

/// The file that defines the unit of a name: the most preferred one that is not a mask; null when
/// there is none.
const Fragment* effectiveFragment(const UnitFolders& folders, std::string_view name) {
    const auto all = fragmentsOf(folders, name);
    const auto file = std::ranges::find(all, false, &Fragment::isMask);
    return file == all.end() ? nullptr : &*file;
}

/// The file that defines a unit, which may be an instance of a template or have a further name.
const Fragment* fragmentOfUnit(const UnitFolders& folders, const std::string& name) {
    const auto alias = folders.aliases.find(name);
    for (const std::string& candidate :
         {name, UnitName::templateOf(name),
          alias == folders.aliases.end() ? std::string() : alias->second})
        if (const Fragment* found = effectiveFragment(folders, candidate))
            return found;
    return nullptr;
}

std::span<const UnitFolders::Enablement> enablementsOf(const UnitFolders& folders,
                                                       std::string_view name) {
    const auto found = folders.enablements.find(name);
    if (found == folders.enablements.end())
        return {};
    return found->second;
}

/// The first link by which an administrator or the user enabled a unit.
const UnitFolders::Enablement* ownEnablement(const UnitFolders& folders, std::string_view name) {
    const auto links = enablementsOf(folders, name);
    const auto own = std::ranges::find(links, false, &UnitFolders::Enablement::isOfDistribution);
    return own == links.end() ? nullptr : &*own;
}

bool isItem(const UnitFolders& folders, const std::string& name, const Fragment& fragment) {
    if (fragment.isMask)
        return false;
    if (!isUnitFolderOfDistribution(fragment.path.parent_path()))
        return true;
    if (UnitName::isTemplate(name))
        return false;
    // A file that can't be read may have been an item before. As an item it is excluded from the
    // comparison; otherwise it would be reported as removed.
    return !fragment.content || fragment.content->hasGroup("Install")
           || ownEnablement(folders, name) != nullptr;
}

bool isMaskedAbove(const UnitFolders& folders, const std::string& name, std::size_t folder) {
    return std::ranges::any_of(fragmentsOf(folders, name), [&](const Fragment& each) {
        return each.isMask && each.folder < folder;
    });
}

bool isMasked(const UnitFolders& folders, const Item& item) {
    const std::string pattern = UnitName::templateOf(item.name);
    return isMaskedAbove(folders, item.name, item.fragment->folder)
           || (!pattern.empty() && isMaskedAbove(folders, pattern, item.fragment->folder));
}

/// The names whose drop-ins apply to a unit, the most specific one first. For "a-b@x.service" these
/// are its own, "a-b@.service", "a-.service" and "service", which applies to all services.
std::vector<std::string> dropInNames(const std::string& name) {
    const std::string suffix(UnitName::suffix(name));
    std::vector<std::string> names{name};
    if (auto pattern = UnitName::templateOf(name); !pattern.empty())
        names.push_back(std::move(pattern));
    std::string_view prefix = UnitName::withoutSuffix(name);
    prefix = prefix.substr(0, prefix.find('@'));
    while (prefix.size() > 1) {
        const auto dash = prefix.rfind('-', prefix.size() - 2);
        if (dash == std::string_view::npos)
            break;
        prefix = prefix.substr(0, dash + 1);
        names.push_back(std::string(prefix) + suffix);
    }
    names.push_back(suffix.substr(1));
    return names;
}

/// The drop-ins of a unit in the order in which they are read, by file name. Of several with the
/// same file name only the most preferred one is kept; if that is a mask, none is.
std::vector<const DropIn*> dropInsOf(const UnitFolders& folders, const std::string& name) {
    struct Candidate {
        const DropIn* dropIn;
        std::size_t specificity;
    };
    std::vector<Candidate> candidates;
    std::size_t specificity = 0;
    for (const auto& each : dropInNames(name)) {
        const auto found = folders.dropIns.find(each);
        if (found != folders.dropIns.end())
            for (const auto& dropIn : found->second)
                candidates.push_back({&dropIn, specificity});
        ++specificity;
    }
    std::ranges::sort(candidates, {}, [](const Candidate& each) {
        return std::tuple(std::string_view(each.dropIn->name), each.dropIn->folder,
                          each.specificity);
    });
    const auto repeated = std::ranges::unique(
        candidates, {}, [](const Candidate& each) { return std::string_view(each.dropIn->name); });
    candidates.erase(repeated.begin(), repeated.end());
    std::vector<const DropIn*> chosen;
    for (const auto& candidate : candidates)
        if (!candidate.dropIn->isMask)
            chosen.push_back(candidate.dropIn);
    return chosen;
}

/// The settings of a unit file, with its drop-ins if they apply to it.
struct Effective {
    UnitSettings settings;
    /// Links among the drop-ins. They are not followed, but adding or removing one is a change.
    std::vector<std::string> linkedDropIns;
};

std::expected<Effective, Failure> effective(const UnitFolders& folders, const std::string& name,
                                            const Fragment& fragment, bool withDropIns) {
    if (!fragment.content)
        return std::unexpected(Failure::unreadable);
    Effective result{UnitSettings(name), {}};
    result.settings.read(*fragment.content);
    if (!withDropIns)
        return result;
    for (const DropIn* dropIn : dropInsOf(folders, name)) {
        if (!dropIn->linkText.empty())
            result.linkedDropIns.push_back(dropIn->name + "=" + textFromBytes(dropIn->linkText));
        else if (!dropIn->content)
            return std::unexpected(Failure::unreadable);
        else
            result.settings.read(*dropIn->content);
    }
    return result;
}

/// The name of the unit that a timer, a socket or a path starts; empty for any other unit.
std::string startedUnit(const std::string& name, const UnitSettings& settings) {
    const std::string_view suffix = UnitName::suffix(name);
    const std::string stem(UnitName::withoutSuffix(name));
    const auto orDefault = [](const std::string& given, const std::string& usual) {
        return given.empty() ? usual : given;
    };
    if (suffix == ".timer" || suffix == ".path")
        return orDefault(settings.value("Unit"), stem + ".service");
    if (suffix != ".socket")
        return {};
    const bool hasInstancePerConnection = !settings.value("Accept").empty();
    return orDefault(settings.value("Service"),
                     stem + (hasInstancePerConnection ? "@" : "") + ".service");
}

constexpr std::string_view execPrefixes = "@-:+!|";

/// A value of a setting "Exec…" with the path of its program without links into /usr.
std::string normalisedCommand(const std::string& command, const MergedFolders& merged) {
    const auto start = std::min(command.find_first_not_of(execPrefixes), command.size());
    return command.substr(0, start) + merged.canonical(std::string_view(command).substr(start));
}

Array arrayOf(const std::vector<std::string>& texts) {
    Array array;
    for (const auto& text : texts)
        array.push_back({text});
    return array;
}

void addPrograms(const Effective& unit, const MergedFolders& merged, Dictionary& definition) {
    std::vector<std::string> lines;
    const auto texts = unit.settings.byDefinitionKey();
    if (const auto found = texts.find("ProgramArguments"); found != texts.end()) {
        for (const auto& line : found->second) {
            const auto value = line.find('=') + 1;
            lines.push_back(line.substr(0, value) + normalisedCommand(line.substr(value), merged));
        }
    }
    std::ranges::copy(unit.linkedDropIns, std::back_inserter(lines));
    if (!lines.empty()) {
        auto& all = definition["ProgramArguments"];
        Array array = arrayOf(lines);
        if (const auto* earlier = all.as<Array>())
            array.insert(array.begin(), earlier->begin(), earlier->end());
        all.content = std::move(array);
    }
    const auto commands = unit.settings.values("ExecStart");
    if (commands.empty())
        return;
    std::string_view command = commands.front();
    command.remove_prefix(std::min(command.find_first_not_of(execPrefixes), command.size()));
    if (const auto program = CommandText::firstWord(command, Quoting::unit))
        definition["Program"] = {merged.canonical(*program)};
}

Value secondsValue(double seconds) {
    const auto whole = static_cast<double>(std::numeric_limits<std::int64_t>::max());
    if (seconds == std::floor(seconds) && seconds < whole)
        return {static_cast<std::int64_t>(seconds)};
    return {seconds};
}

/// Adds the intervals of a timer: a single one that can be parsed as `StartInterval`, whose value
/// is shown, all others to `StartCalendarInterval`, of which only a digest is kept.
void addIntervals(const UnitSettings& settings, Dictionary& definition) {
    std::vector<std::string> lines;
    std::vector<std::string> spans;
    for (const char* name : {"OnUnitActiveSec", "OnUnitInactiveSec"})
        for (const auto& span : settings.values(name)) {
            spans.push_back(span);
            lines.push_back(name + ("=" + span));
        }
    const auto only = spans.size() == 1 ? TimeSpan::seconds(spans.front()) : std::nullopt;
    if (only) {
        definition["StartInterval"] = secondsValue(*only);
    } else if (!lines.empty()) {
        auto& calendar = definition["StartCalendarInterval"];
        if (const auto* times = calendar.as<Array>())
            for (const auto& time : *times)
                lines.push_back(*time.as<std::string>());
        calendar.content = arrayOf(lines);
    }
}

void addKeepAlive(const UnitSettings& settings, Dictionary& definition) {
    const std::string restart = settings.value("Restart");
    if (restart == "always")
        definition["KeepAlive"] = {true};
    else if (!restart.empty() && restart != "no")
        definition["KeepAlive"] = {Dictionary{{"Restart", {restart}}}};
    if (const auto pause = TimeSpan::seconds(settings.value("RestartSec")))
        definition["ThrottleInterval"] = secondsValue(*pause);
}

/// Adds the programs of the service that a timer, a socket or a path starts.
std::expected<void, Failure> addStarted(const UnitFolders& folders, const std::string& name,
                                        const MergedFolders& merged, Dictionary& definition) {
    const Fragment* fragment = fragmentOfUnit(folders, name);
    if (!fragment)
        return {};
    const auto unit = effective(folders, name, *fragment, /*withDropIns=*/true);
    if (!unit)
        return std::unexpected(unit.error());
    addPrograms(*unit, merged, definition);
    return {};
}

} // namespace

std::vector<Item> itemsOf(const UnitFolders& folders) {
    std::vector<Item> items;
    for (const auto& [name, fragments] : folders.fragments)
        for (const auto& fragment : fragments)
            if (isItem(folders, name, fragment))
                items.push_back({name, fragment.path, &fragment});
    for (const auto& [name, links] : folders.enablements) {
        const auto* link = ownEnablement(folders, name);
        const Fragment* fragment = effectiveFragment(folders, UnitName::templateOf(name));
        if (link && fragment && !effectiveFragment(folders, name))
            items.push_back({name, link->path, fragment});
    }
    return items;
}

std::expected<Dictionary, Failure> definition(const UnitFolders& folders, const Item& item,
                                              const MergedFolders& merged) {
    const bool isPreferred = fragmentOfUnit(folders, item.name) == item.fragment;
    const auto unit = effective(folders, item.name, *item.fragment, isPreferred);
    if (!unit)
        return std::unexpected(unit.error());
    Dictionary result;
    for (const auto& [key, texts] : unit->settings.byDefinitionKey())
        if (key != "ProgramArguments")
            result[std::string(key)] = {arrayOf(texts)};
    result["Label"] = {textFromBytes(item.name)};
    result["RunAtLoad"] = {!enablementsOf(folders, item.name).empty()};
    result["Disabled"] = {isMasked(folders, item)};
    addKeepAlive(unit->settings, result);
    addIntervals(unit->settings, result);
    addPrograms(*unit, merged, result);
    if (const std::string started = startedUnit(item.name, unit->settings); !started.empty())
        if (const auto added = addStarted(folders, started, merged, result); !added)
            return std::unexpected(added.error());
    return result;
}

} // namespace tidemark::UnitDefinition
