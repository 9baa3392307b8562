#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace tidemark::test {

/// True when `text` contains `part`; a failed expectation shows both.
inline testing::AssertionResult contains(const std::string& text, std::string_view part) {
    return (text.find(part) != std::string::npos ? testing::AssertionSuccess()
                                                 : testing::AssertionFailure())
           << "looking for \"" << part << "\" in:\n"
           << text;
}

} // namespace tidemark::test
