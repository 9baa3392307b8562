#pragma once

#include "core/memory/CopiedItem.h"
#include "platform/linux/DisplaySession.h"
#include "platform/linux/PipeTransfer.h"
#include "platform/linux/WaylandConnection.h"

#include <list>

namespace tidemark {

/// Offers the content of the clipboard of a Wayland compositor, by the data-control protocols, and
/// serves it until another program replaces it. Lives on the thread of the connection.
class WaylandSelectionOwner final : public DisplayReader {
public:
    /// How long a program may take to read the next bytes.
    static constexpr std::chrono::seconds readTime{5};

    /// `connection` must have one of the protocols (`dataControl::isOffered`).
    WaylandSelectionOwner(WaylandConnection& connection, std::vector<ClipData> contents);
    ~WaylandSelectionOwner() override;

private:
    struct Content {
        std::string type;
        std::shared_ptr<const std::string> bytes;
    };

    void send(std::string_view type, int descriptor);
    void end();

    WaylandConnection& connection;
    std::vector<Content> contents;
    WaylandObject manager;
    WaylandObject seat;
    WaylandObject device;
    WaylandObject source;
    std::list<std::unique_ptr<PipeWriter>> writers;
};

} // namespace tidemark
