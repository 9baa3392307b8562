#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>
#include <vector>

namespace tidemark::test {

struct Outcome {
    /// Exit status; −1 when a signal ended the program.
    int status = -1;
    std::string out;
    std::string err;

    bool operator==(const Outcome&) const = default;
};

/// Where the standard output of a program goes.
enum class Output { file, terminal, fullDisk };

/// Runs the built program in English and UTC, unless `environment` has it otherwise, and waits for
/// its end.
Outcome run(const std::vector<std::string>& arguments, Output output = Output::file,
            const std::vector<std::string>& environment = {});

} // namespace tidemark::test
