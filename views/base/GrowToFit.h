#pragma once

class QWidget;

namespace tidemark {

/// Makes a dialog as high as its content needs at its width, after a wrapping text in it has
/// changed. Qt does so only when the dialog is shown, and then lets the texts overlap.
void growToFit(QWidget& dialog);

} // namespace tidemark
