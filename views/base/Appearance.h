#pragma once

#include "app/ports/SystemAppearance.h"
#include "app/settings/ViewSettings.h"

#include <QObject>
#include <QPalette>

namespace tidemark {

/// Gives all windows light or dark colours, as the user chose in the settings or for the whole
/// desktop, and icons that can be seen on them. A palette that the desktop itself gives to programs
/// stays in use when it fits that choice and no high contrast is asked for.
class Appearance : public QObject {
    Q_OBJECT

public:
    /// Made after the application object of Qt. `used` outlives it.
    explicit Appearance(const ViewSettings& used);

    void setSystem(const SystemAppearance& appearance);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();
    void chooseIcons();

    const ViewSettings& settings;
    SystemAppearance system;
    /// True while the palette of the desktop is in use.
    bool isOfDesktop = true;
};

} // namespace tidemark
