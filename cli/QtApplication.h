#pragma once

#include <QCoreApplication>
#include <string>

namespace tidemark {

/// The application object of Qt. It wants the arguments of main() for as long as it lives.
struct QtApplication {
    /// What the event loop, the locks and a capture need, with room to spare: the libraries of the
    /// event loop abort without theirs. To be asked for before.
    static constexpr int neededDescriptors = 16;

    int count = 1;
    std::string name = "tidemark";
    char* names[2] = {name.data(), nullptr};
    QCoreApplication qt{count, names};
};

} // namespace tidemark
