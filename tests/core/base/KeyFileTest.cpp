#include "core/base/KeyFile.h"

#include <optional>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace std::string_literals;
using enum KeyFile::Continuation;

namespace {

/// Everything in the file as "group/key=value;", or why it is not read.
std::string shown(std::string bytes, KeyFile::Continuation continuation) {
    const auto file = KeyFile::parse(std::move(bytes), continuation);
    if (!file)
        return file.error() == KeyFile::Failure::tooLarge ? "too large" : "malformed";
    std::string text;
    for (const auto& entry : file->entries())
        text += std::string(entry.group) + "/" + std::string(entry.key) + "=" + entry.text() + ";";
    return text;
}

} // namespace

TEST(KeyFile, ReadsGroupsKeysAndComments) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"[A]\nx=1", "A/x=1;"},
        {"\xEF\xBB\xBF[A]\r\nx = 1 \r\n\r\n  # x=2\n;x=3\n[B]\n y\t=\t a b=c", "A/x=1;B/y=a b=c;"},
        {"[A]\nx=1\n[B]\ny=2\n[A]\nx=\nx=3", "A/x=1;B/y=2;A/x=;A/x=3;"},
        {"x=1\n[A]\nno key\n=2\nName[de]=ä\n[]\nz=", "A/Name[de]=ä;/z=;"},
        {"[A]\nx=a\\\ny=b", "A/x=a\\;A/y=b;"},
        {"[A]\nx=\xFF\xC3\nb\xFFy=2", "A/x=\uFFFDFF\uFFFDC3;A/b\xFFy=2;"},
        {"[A]\n# \xFF\nx=1", "A/x=1;"},
        {"[A\nx=1", "malformed"},
        {"[\xFF]\nx=1", "malformed"},
        {"[A]\nx=1\0"s, "malformed"},
        {std::string(KeyFile::maximumSize, '\n'), ""},
        {std::string(KeyFile::maximumSize + 1, '\n'), "too large"},
    };
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(shown(bytes, none), expected) << bytes.substr(0, 80);
}

TEST(KeyFile, JoinsContinuedLines) {
    const std::pair<std::string, std::string> cases[] = {
        {"[A]\nx=a \\\n  b\\\r\n\tc\ny=d", "A/x=a  b c;A/y=d;"},
        {"[A]\nx=a\\\n# left out \\\n ;and this\nb\ny=c", "A/x=a b;A/y=c;"},
        {"# no line goes on \\\n[A]\nx=1", "A/x=1;"},
        {"[A]\nx=a\\\\\ny=b\\\\\\\nc", "A/x=a\\\\;A/y=b\\\\ c;"},
        {"[A]\nx=a\\\n\ny=b", "A/x=a;A/y=b;"},
        {"[A]\nx=a\\\n[B]\ny=b\\", "A/x=a [B];A/y=b;"},
        {"\\", ""},
        {"[A]\nx=a\\\n#", "A/x=a;"},
        {"[A\\\n]\nx=1", "A /x=1;"},
    };
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(shown(bytes, backslash), expected) << bytes;
}

TEST(KeyFile, FindsTheLastOrAllValuesOfAKey) {
    auto parsed = KeyFile::parse("[A]\nx=1\nx=\n[B]\nx=2\n[A]\nx=3\n[C]\n", none);
    ASSERT_TRUE(parsed);
    const KeyFile file = *std::move(parsed);
    EXPECT_EQ(file.value("A", "x"), "3");
    EXPECT_EQ(file.value("B", "x"), "2");
    EXPECT_EQ(file.value("C", "x"), std::nullopt);
    EXPECT_EQ(file.values("A", "x"), (std::vector<std::string>{"1", "", "3"}));
    EXPECT_TRUE(file.hasGroup("C"));
    EXPECT_FALSE(file.hasGroup("x"));
    EXPECT_EQ(KeyFile::unescaped("\\sa\\\\n\\t\\;\\"), " a\\n\t\\;\\");
}
