#pragma once

#include <QObject>
#include <utility>

namespace tidemark {

/// An object whose published values views may read, and are told about.
class Observable : public QObject {
    Q_OBJECT

Q_SIGNALS:
    /// Some published value is another now.
    void changed();
};

/// A value that tells its owner's observers when it becomes another.
template <class T>
class Published {
public:
    explicit Published(Observable* object, T initial = {})
        : owner(object), value(std::move(initial)) {}

    operator const T&() const { return value; }
    const T& operator*() const { return value; }
    const T* operator->() const { return &value; }

    Published& operator=(T next) {
        if (next == value)
            return *this;
        value = std::move(next);
        Q_EMIT owner->changed();
        return *this;
    }
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

private:
    Observable* owner;
    T value;
};

} // namespace tidemark
