#pragma once

#include <optional>
#include <string>

/// Runs a test once more in a network namespace of its own, as an ordinary user who may create
/// interfaces and routes there.
namespace tidemark::test::networkNamespace {

/// True in the process that runs in the namespace.
bool isInside();
/// Why there can be no namespace on this machine; absent when there can.
std::optional<std::string> obstacle();
/// Runs the present test in a namespace. Returns its output if it failed, else an empty text.
std::string failure();

/// Runs the command `ip` with these arguments, separated by spaces. Fails the test if it fails.
void ip(const char* arguments);

} // namespace tidemark::test::networkNamespace

/// The first line of a test that is to run in a namespace.
#define TIDEMARK_RUN_IN_NETWORK_NAMESPACE()                                                        \
    if (!tidemark::test::networkNamespace::isInside()) {                                           \
        if (const auto why = tidemark::test::networkNamespace::obstacle())                         \
            GTEST_SKIP() << *why;                                                                  \
        EXPECT_EQ(tidemark::test::networkNamespace::failure(), "");                                \
        return;                                                                                    \
    }
