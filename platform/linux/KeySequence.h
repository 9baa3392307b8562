#pragma once

#include <QDBusArgument>
#include <QList>

namespace tidemark {

/// A sequence of up to four keys in Qt's numbers, as KGlobalAccel has it: of the type (ai).
struct KeySequence {
    QList<int> keys;

    bool isAny() const { return !keys.isEmpty() && keys.first() != 0; }
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const KeySequence& sequence) {
    argument.beginStructure();
    argument << sequence.keys;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, KeySequence& sequence) {
    argument.beginStructure();
    argument >> sequence.keys;
    argument.endStructure();
    // As every such operator of Qt does. NOLINTNEXTLINE(bugprone-return-const-ref-from-parameter)
    return argument;
}

} // namespace tidemark
