#pragma once

#include "app/ports/GlobalShortcut.h"
#include "app/ports/SystemAppearance.h"
#include "app/ports/TrayHost.h"

#include <memory>
#include <optional>
#include <string>

/// What the program with windows needs of the desktop. Each system defines these functions in one
/// source file.
namespace tidemark::desktopServices {

/// Removes the name of a display on another machine from the environment, so that nothing in this
/// process connects to it. Called before any thread is started.
void ignoreRemoteDisplay();
/// Whether a window can be opened. Asks the display, and waits until it answers.
bool hasDisplay();

/// Null where this release has none for the system.
std::unique_ptr<GlobalShortcut> searchShortcut(GlobalShortcut::Observer observer);
/// `changed` is called from the event loop: with true when icons can be shown, also when the part
/// of the desktop that shows them was started again, and with false when they can't any more.
std::unique_ptr<TrayHost> trayHost(std::function<void(bool isThere)> changed);
std::unique_ptr<SystemAppearanceSource> appearance(SystemAppearanceSource::Changed changed);

/// The name of the user's service, if the system started this process as one; absent for a process
/// that was started in another way.
std::optional<std::string> ownService();
/// Asks the system to start a service of the user, and does not wait for that. Allocates nothing,
/// so that a signal handler can call it.
void startService(const char* name);

} // namespace tidemark::desktopServices
