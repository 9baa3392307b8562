#pragma once

#include <QPalette>

namespace tidemark::demo::palettes {

/// The colours of the pictures, which do not depend on those of the machine that takes them.
QPalette light();
QPalette dark();

} // namespace tidemark::demo::palettes
