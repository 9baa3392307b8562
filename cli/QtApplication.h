#pragma once

#include <QCoreApplication>
#include <string>

namespace tidemark {

/// The application object of Qt. It wants the arguments of main() for as long as it lives.
struct QtApplication {
    int count = 1;
    std::string name = "tidemark";
    char* names[2] = {name.data(), nullptr};
    QCoreApplication qt{count, names};
};

} // namespace tidemark
