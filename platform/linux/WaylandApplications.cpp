#include "platform/linux/WaylandApplications.h"

#include <map>
#include <utility>

namespace tidemark {

WaylandApplications::WaylandApplications(WaylandConnection& connection, Changed wanted,
                                         ApplicationFinder& applications)
    : changed(std::move(wanted)), applications(applications), windows(connection, [this] {
          // While the first windows are reported one by one, the list is not complete.
          if (last)
              read();
      }) {
    if (!windows.isOffered())
        return;
    connection.finishRequests();
    read();
}

void WaylandApplications::read() {
    auto now = windows.applications();
    if (last == now)
        return;
    last = std::move(now);
    std::map<std::string, ClipApplication> byId;
    for (const auto& named : *last) {
        auto application = applications.ofNamedWindow(named);
        byId.emplace(application.id, application);
    }
    std::vector<ClipApplication> running;
    for (auto& [id, application] : byId)
        running.push_back(std::move(application));
    changed(std::move(running));
}

} // namespace tidemark
