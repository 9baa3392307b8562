#pragma once

#include "tests/platform/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

#include <QProcess>
#include <string>

namespace tidemark::test {

/// The real upowerd and power-profiles-daemon on a private bus, on a machine whose power supplies
/// are made up by umockdev. Ends its services when it is destroyed.
class PowerMachine {
public:
    explicit PowerMachine(const PrivateBus& bus);
    ~PowerMachine();

    /// What is missing on this machine to run them, as a sentence; empty when nothing is.
    static std::string missing();

    /// Carries out a command of power_supplies.py and waits until it is done.
    void carryOut(const std::string& command);

private:
    TemporaryFolder history;
    QProcess process;
};

} // namespace tidemark::test
