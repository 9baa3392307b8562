#pragma once

class QWidget;

namespace tidemark {

/// Makes a dialog at least as high as its content needs at its width, after a wrapping text in it
/// has changed. Qt does so only when the dialog opens; texts that become longer after that would
/// overlap.
void growToFit(QWidget& dialog);

} // namespace tidemark
