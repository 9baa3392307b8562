#pragma once

#include <QLoggingCategory>

namespace tidemark {

/// "app.tidemark.captures"
Q_DECLARE_LOGGING_CATEGORY(capturesLog)

} // namespace tidemark
