#pragma once

#include <QCoreApplication>
#include <string>

namespace tidemark {

/// The application object of Qt, with arguments like those of main(), which it needs for its
/// lifetime.
struct QtApplication {
    /// File descriptors needed by the event loop, the locks and a capture, with a margin. Before
    /// making this object, check with `requireFreeDescriptors` that they are free, because the
    /// libraries abort when they get none.
    static constexpr int neededDescriptors = 16;

    int count = 1;
    std::string name = "tidemark";
    char* names[2] = {name.data(), nullptr};
    QCoreApplication qt{count, names};
};

} // namespace tidemark
