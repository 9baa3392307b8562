#pragma once

#include <QObject>

namespace tidemark {

/// An object that publishes values. A read returns the present value at once. The signal `changed`
/// is emitted later, from the event loop, once for all changes since it was last emitted. A
/// function that changes several values without a return to the event loop in between has therefore
/// finished before the first observer is called, which then reads no half-changed state. Main
/// thread only.
class Observable : public QObject {
    Q_OBJECT

public:
    /// Schedules `changed`. May be called before or after a value is changed, and any number of
    /// times.
    void noteChange();

Q_SIGNALS:
    /// A published value has changed. Emitted only as a result of `noteChange`.
    void changed();

private:
    bool isAnnounced = false;
};

} // namespace tidemark
