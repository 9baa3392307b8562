#pragma once

#include "app/base/Observable.h"

#include <utility>

namespace tidemark {

/// A value that announces a change of its owner when it becomes another.
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
        owner->noteChange();
        return *this;
    }
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

private:
    Observable* owner;
    T value;
};

} // namespace tidemark
