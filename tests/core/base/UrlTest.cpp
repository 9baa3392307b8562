#include "core/base/Url.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

using namespace tidemark;

TEST(UrlScheme, IsPresentOnlyInUrls) {
    const std::map<std::string, std::string> schemes = {
        {"https://example.org/a%20b?c=d#e", "https"},
        {"HTTP://[::1]:80/", "HTTP"},
        {"a+b-c.1:", "a+b-c.1"},
        {"example.org/path", "none"},
        {"", "none"},
        {":no-scheme", "none"},
        {"1http://example.org", "none"},
        {"ht tp://example.org", "none"},
        {"https://example.org/a b", "none"},
        {"https://example.org/%2", "none"},
        {"https://example.org/%zz", "none"},
        {"https://example.org/#a#b", "none"},
        {"https://exämple.org", "none"},
        {"https://example.org\n", "none"},
    };
    for (const auto& [text, scheme] : schemes)
        EXPECT_EQ(urlScheme(text).value_or("none"), scheme) << text;
}
