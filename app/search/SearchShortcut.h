#pragma once

#include "app/base/Published.h"
#include "app/ports/GlobalShortcut.h"

#include <functional>
#include <memory>

namespace tidemark {

/// The keys that open the search panel from any program. Main thread only.
class SearchShortcut : public Observable {
    Q_OBJECT

public:
    /// Returns null on a system without global shortcuts.
    using Register = std::function<std::unique_ptr<GlobalShortcut>(GlobalShortcut::Observer)>;

    explicit SearchShortcut(const Register& registerKeys);

    /// Not available until the keys are assigned to this program, and while another program has
    /// them: then the panel is opened from the menus alone.
    Published<GlobalShortcut::Availability> availability{this};

Q_SIGNALS:
    void pressed();

private:
    std::unique_ptr<GlobalShortcut> keys;
};

} // namespace tidemark
