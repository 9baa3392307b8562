#pragma once

class QCoreApplication;

namespace tidemark {

/// Installs the catalogues of the user's language: of the windows, and of Qt's own dialogs.
void loadTranslations(QCoreApplication& application);

} // namespace tidemark
