#include "platform/linux/ApplicationInstances.h"

#include <algorithm>
#include <utility>

namespace tidemark {

void ApplicationInstances::assume(const std::string& instance, const Application& application) {
    auto& entry = running[application.id];
    entry.application = application;
    entry.instances.insert(instance);
    entry.launch.reset();
    identifiers[instance] = application.id;
}

void ApplicationInstances::add(const std::string& instance, const Application& application,
                               Date moment, double now) {
    const auto [place, isNew] = running.try_emplace(application.id);
    if (isNew) {
        place->second.application = application;
        place->second.launch.emplace(moment, now + settlingTime);
    }
    place->second.instances.insert(instance);
    identifiers[instance] = application.id;
}

std::optional<ApplicationSource::Change> ApplicationInstances::remove(const std::string& instance,
                                                                      Date moment) {
    const auto identifier = identifiers.extract(instance);
    if (identifier.empty())
        return std::nullopt;
    const auto place = running.find(identifier.mapped());
    place->second.instances.erase(instance);
    if (!place->second.instances.empty())
        return std::nullopt;
    const Running last = std::move(running.extract(place).mapped());
    if (last.launch)
        return std::nullopt;
    return Change{Change::Kind::closed, last.application, moment};
}

void ApplicationInstances::forget(std::string_view firstWord) {
    std::erase_if(identifiers, [&](const auto& known) {
        const auto& [instance, identifier] = known;
        if (!instance.starts_with(firstWord))
            return false;
        auto& entry = running.at(identifier);
        entry.instances.erase(instance);
        if (entry.instances.empty())
            running.erase(identifier);
        return true;
    });
}

std::vector<ApplicationSource::Change> ApplicationInstances::settled(double now) {
    std::vector<Change> launches;
    for (auto& [identifier, entry] : running)
        if (entry.launch && entry.launch->second <= now) {
            launches.push_back({Change::Kind::launched, entry.application, entry.launch->first});
            entry.launch.reset();
        }
    std::ranges::stable_sort(launches, {}, &Change::moment);
    return launches;
}

std::optional<double> ApplicationInstances::nextSettling() const {
    std::optional<double> next;
    for (const auto& [identifier, entry] : running)
        if (entry.launch && (!next || entry.launch->second < *next))
            next = entry.launch->second;
    return next;
}

void ApplicationInstances::clear() {
    running.clear();
    identifiers.clear();
}

} // namespace tidemark
