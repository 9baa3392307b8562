#include "core/history/PrivateDetails.h"

#include "core/base/Text.h"
#include "core/records/MemoryRecord.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include <nlohmann/json.hpp>

namespace tidemark {

namespace {

using Json = nlohmann::json;

constexpr std::string_view mark = "[Excluded]";

constexpr auto privateKeys =
    std::to_array<std::string_view>({"path", "program", "deviceName", "networkName"});
/// Objects whose "name" is private.
constexpr auto namedObjects = std::to_array<std::string_view>({"volume", "volumeContext"});
constexpr auto memoryKeys = std::to_array<std::string_view>({"title", "text", "sourceURL"});
constexpr auto internalKeys = std::to_array<std::string_view>({"id", "symbol"});
constexpr auto droppedKeys =
    std::to_array<std::string_view>({"path", "program", "deviceName", "networkName",
                                     "directFileSizes", "text", "payload", "sourceURL"});

bool holds(const auto& keys, std::string_view key) {
    return std::ranges::find(keys, key) != keys.end();
}

/// The text under a key; empty without one.
std::string_view textOf(const Json& object, std::string_view key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string())
        return {};
    return found->get_ref<const std::string&>();
}

/// Keys of one object, each a single time: those that became equal to another get a number.
class Keys {
public:
    std::string unique(const std::string& key) {
        std::string free = key;
        while (!taken.insert(free).second)
            free = key + ' ' + std::to_string(++numbers.try_emplace(key, 1).first->second);
        return free;
    }

private:
    std::set<std::string> taken;
    std::map<std::string, int> numbers;
};

bool isOfFile(const Json& memory) {
    const auto kind = json::fromRawValue<MemoryRecord::Kind>(textOf(memory, "kind"));
    return kind && MemoryRecord::isFile(*kind);
}

} // namespace

PrivateDetails::PrivateDetails(const Json& event, bool keep) : keepsDetails(keep) {
    if (keep)
        return;
    collect(event);
    if (const auto memory = event.find("memory"); memory != event.end() && memory->is_object())
        collectMemory(*memory);
    std::ranges::sort(texts, [](const std::string& a, const std::string& b) {
        return a.size() != b.size() ? a.size() > b.size() : a < b;
    });
    const auto repetitions = std::ranges::unique(texts);
    texts.erase(repetitions.begin(), repetitions.end());
}

void PrivateDetails::collect(const Json& node) {
    if (node.is_object()) {
        for (const std::string_view key : privateKeys)
            collectText(node, key);
        for (const std::string_view key : namedObjects)
            if (const auto found = node.find(key); found != node.end() && found->is_object())
                collectText(*found, "name");
    }
    if (node.is_structured())
        for (const Json& child : node)
            collect(child);
}

void PrivateDetails::collectMemory(const Json& memory) {
    for (const std::string_view key : memoryKeys)
        collectText(memory, key);
    // The line below the title of a file names its folder.
    if (!isOfFile(memory))
        return;
    if (const auto folder = parentFolder(textOf(memory, "path")); folder != "/")
        collectText(folder);
}

void PrivateDetails::collectText(const Json& object, std::string_view key) {
    collectText(textOf(object, key));
}

void PrivateDetails::collectText(std::string_view text) {
    if (!text.empty())
        texts.emplace_back(text);
}

bool PrivateDetails::isDropped(std::string_view key) const {
    return holds(internalKeys, key) || (!keepsDetails && holds(droppedKeys, key));
}

Json PrivateDetails::cleaned(Json node) const {
    if (node.is_string() && !texts.empty())
        return excluded(node.get_ref<const std::string&>());
    if (node.is_array())
        for (Json& child : node)
            child = cleaned(std::move(child));
    if (!node.is_object())
        return node;
    Json object = Json::object();
    Keys keys;
    for (auto& [key, value] : node.items())
        if (!isDropped(key))
            object[keys.unique(excluded(key))] = cleaned(std::move(value));
    return object;
}

std::string PrivateDetails::excluded(std::string_view text, std::size_t first) const {
    for (std::size_t index = first; index < texts.size(); ++index)
        if (text.find(texts[index]) != std::string_view::npos)
            return excludedOccurrences(text, index);
    return std::string(text);
}

std::string PrivateDetails::excludedOccurrences(std::string_view text, std::size_t index) const {
    // Shorter texts are looked for between the marks and never inside of them: a device may be
    // called "Excluded", and marks in marks would grow without end.
    std::string result;
    std::size_t start = 0;
    for (std::size_t place = text.find(texts[index]); place != std::string_view::npos;
         place = text.find(texts[index], start)) {
        result += excluded(text.substr(start, place - start), index + 1);
        result += mark;
        start = place + texts[index].size();
    }
    return result + excluded(text.substr(start), index + 1);
}

} // namespace tidemark
