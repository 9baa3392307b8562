#include "core/history/PrivateDetails.h"

#include "core/base/Text.h"
#include "core/records/Event.h"

#include <algorithm>
#include <map>
#include <set>

#include <nlohmann/json.hpp>

namespace tidemark {

namespace {

using Json = nlohmann::json;

constexpr std::string_view mark = "[Excluded]";

/// The text under a key; empty when it is missing.
std::string_view textOf(const Json& object, std::string_view key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string())
        return {};
    return found->get_ref<const std::string&>();
}

/// The keys of one object after cleaning: a number is added to those that became equal to another.
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

PrivateDetails::PrivateDetails(const Json& event, bool keepsDetails) : keepsDetails(keepsDetails) {
    if (keepsDetails)
        return;
    collect(event, storedShapeOf<Event>());
    if (const auto memory = event.find("memory"); memory != event.end())
        collectFolder(*memory);
    std::ranges::sort(texts, [](const std::string& a, const std::string& b) {
        return a.size() != b.size() ? a.size() > b.size() : a < b;
    });
    const auto repetitions = std::ranges::unique(texts);
    texts.erase(repetitions.begin(), repetitions.end());
}

void PrivateDetails::collect(const Json& node, const StoredShape& shape) {
    if (shape.element) {
        for (const Json& child : node)
            collect(child, shape.element());
        return;
    }
    for (const StoredShape::Key& key : shape.keys) {
        const auto found = node.find(key.name);
        if (found == node.end())
            continue;
        if (key.privacy == Private || key.privacy == Masked)
            collectTexts(*found);
        else
            collect(*found, key.shape());
    }
}

/// Collects all texts of a private value, at any depth.
void PrivateDetails::collectTexts(const Json& node) {
    if (node.is_string())
        collectText(node.get_ref<const std::string&>());
    else if (node.is_structured())
        for (const Json& child : node)
            collectTexts(child);
}

/// The subtitle of a remembered file contains its folder.
void PrivateDetails::collectFolder(const Json& memory) {
    if (!isOfFile(memory))
        return;
    if (const auto folder = parentFolder(textOf(memory, "path")); folder != "/")
        collectText(folder);
}

void PrivateDetails::collectText(std::string_view text) {
    if (!text.empty())
        texts.emplace_back(text);
}

bool PrivateDetails::isDropped(json::Privacy privacy) const {
    return privacy == Internal || (!keepsDetails && (privacy == Private || privacy == Omitted));
}

Json PrivateDetails::cleaned(Json event) const {
    return cleaned(std::move(event), storedShapeOf<Event>());
}

Json PrivateDetails::cleaned(Json node, const StoredShape& shape) const {
    if (node.is_string() && !texts.empty())
        return excluded(node.get_ref<const std::string&>());
    if (node.is_array())
        for (Json& child : node)
            child = cleaned(std::move(child), shape.element());
    if (!node.is_object())
        return node;
    Json object = Json::object();
    Keys keys;
    for (auto& [name, value] : node.items()) {
        const StoredShape::Key* key = shape.element ? nullptr : shape.find(name);
        if (!shape.element && (!key || isDropped(key->privacy)))
            continue;
        const StoredShape& inner = key ? key->shape() : shape.element();
        object[keys.unique(excluded(name))] = cleaned(std::move(value), inner);
    }
    return object;
}

std::string PrivateDetails::excluded(std::string_view text, std::size_t first) const {
    for (std::size_t index = first; index < texts.size(); ++index)
        if (text.find(texts[index]) != std::string_view::npos)
            return excludedOccurrences(text, index);
    return std::string(text);
}

std::string PrivateDetails::excludedOccurrences(std::string_view text, std::size_t index) const {
    // Shorter texts are searched for between the placeholders, not inside of them: a device may be
    // called "Excluded", and placeholders in placeholders would grow without end.
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
