#pragma once

#include <QPalette>

/// The colours of windows where the program chooses them itself.
namespace tidemark::palettes {

QPalette light();
QPalette dark();
/// Light and dark colours with the strongest contrast between text, background and lines.
QPalette lightHighContrast();
QPalette darkHighContrast();

} // namespace tidemark::palettes
