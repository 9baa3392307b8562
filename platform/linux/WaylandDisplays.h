#pragma once

#include "app/ports/DisplaySource.h"
#include "platform/linux/DisplaySession.h"
#include "platform/linux/WaylandConnection.h"

#include <functional>
#include <map>
#include <memory>

namespace tidemark {

/// The outputs of a Wayland compositor (wl_output), with their logical sizes where it has
/// xdg-output-unstable-v1. Lives on the thread of the connection.
class WaylandDisplays final : public DisplayReader, private WaylandConnection::Observer {
public:
    using Changed = std::function<void(std::vector<ObservedDisplay>)>;

    /// `changed` is called with the present displays, and again when they differ.
    WaylandDisplays(WaylandConnection& connection, Changed changed);
    ~WaylandDisplays() override;

private:
    class Output;

    void added(const WaylandConnection::Global& global) override;
    void removed(std::uint32_t name) override;
    void publish();

    const Changed changed;
    WaylandObject manager;
    /// The outputs by the number that the compositor gave them (the name of their global).
    std::map<std::uint32_t, std::unique_ptr<Output>> outputs;
    std::optional<std::vector<ObservedDisplay>> last;
    bool isComplete = false;
};

} // namespace tidemark
