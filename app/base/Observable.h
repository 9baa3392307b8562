#pragma once

#include <QObject>

namespace tidemark {

/// An object that publishes values. Reading one returns what it is at that moment. `changed`
/// follows from the event loop, once for all changes since the last time: an operation that changes
/// several values, of one object or of many, is finished when the first observer is called, so that
/// no observer reads a state between two of them. Main thread only.
class Observable : public QObject {
    Q_OBJECT

public:
    /// Announces that a published value is another now. To be called at any point of a change, as
    /// often as is convenient.
    void noteChange();

Q_SIGNALS:
    /// Some published value became another. Emitted by `noteChange` alone.
    void changed();

private:
    bool isAnnounced = false;
};

} // namespace tidemark
