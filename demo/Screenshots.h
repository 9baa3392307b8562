#pragma once

#include <QString>
#include <QStringList>

namespace tidemark::demo {

/// Writes a picture of every screen over a fixed made-up history into a folder, as PNG files. With
/// `only`, those alone. At a scale factor of 2 their names end with "-2x". Needs the application
/// object of Qt. Throws `Error` when a file can't be written.
void takeScreenshots(const QString& folder, const QStringList& only);

} // namespace tidemark::demo
