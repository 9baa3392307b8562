#pragma once

#include <QFont>

/// Variants of fonts.
namespace tidemark::fonts {

/// The font of second lines, times and notes: slightly smaller than `font`.
QFont smaller(const QFont& font);
QFont bold(QFont font);
/// The font of the application, its size multiplied by a factor.
QFont ofApplication(double factor);

} // namespace tidemark::fonts
