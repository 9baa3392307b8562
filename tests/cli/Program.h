#pragma once

#include "tests/support/Contains.h"
#include "tests/support/TemporaryFolder.h"

#include <functional>
#include <iosfwd>
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

/// GoogleTest calls this to print an outcome in a failed expectation.
void PrintTo(const Outcome& outcome, std::ostream* stream);

/// Where the standard output of a program goes; `closedPipe` is a pipe whose reading end is closed.
enum class Output { file, terminal, fullDisk, closedPipe };

/// Runs the built program in English and UTC, unless `environment` has it otherwise, and waits for
/// its end. The program has no other variables. `beforehand` is called in its process before it
/// begins.
Outcome run(
    const std::vector<std::string>& arguments, Output output = Output::file,
    const std::vector<std::string>& environment = {},
    const std::function<void()>& beforehand = [] {});

} // namespace tidemark::test
