#include "core/base/PropertyList.h"

#include "tests/support/PropertyLists.h"
#include "tests/support/TemporaryFolder.h"

#include <clocale>
#include <limits>
#include <tuple>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace std::string_literals;
using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::Failure;
using PropertyList::parse;
using PropertyList::Value;
using test::assembledList;
using test::binaryList;
using test::xmlList;

namespace {

constexpr std::string_view everyType = R"(<dict>
    <key>yes</key><true/><key>no</key><false/>
    <key>one</key><integer>1</integer><key>minus</key><integer>-5</integer>
    <key>lowest</key><integer>-9223372036854775808</integer>
    <key>highest</key><integer>18446744073709551615</integer>
    <key>real</key><real>-0.25</real>
    <key>text</key><string>a &lt;&amp;&#233; “b” <![CDATA[<x>]]></string>
    <key>bytes</key><data>AAEC/w==</data>
    <key>early</key><date>1999-12-31T23:59:59Z</date>
    <key>late</key><date>4001-01-01T00:00:00Z</date>
    <key>list</key><array><string/><array/><dict/></array>
    <key>clé</key><string>é</string>
</dict>)";

const Dictionary& everyTypeRead() {
    static const Dictionary values{
        {"yes", {true}},
        {"no", {false}},
        {"one", {std::int64_t{1}}},
        {"minus", {std::int64_t{-5}}},
        {"lowest", {std::numeric_limits<std::int64_t>::min()}},
        {"highest", {18446744073709551615.0}},
        {"real", {-0.25}},
        {"text", {"a <&é “b” <x>"s}},
        {"bytes", {Data{"\0\1\2\xFF"s}}},
        {"early", {Date{-31'622'401}}},
        {"late", {Date{63'113'904'000}}},
        {"list", {Array{{""s}, {Array{}}, {Dictionary{}}}}},
        {"clé", {"é"s}},
    };
    return values;
}

/// A binary list of a dictionary with one key, given as the bytes of its object.
std::string keyed(std::string key) {
    return assembledList({"\xD1\1\2"s, std::move(key), "\x09"s});
}

} // namespace

TEST(PropertyList, ReadsEveryTypeInBothForms) {
    for (const auto& bytes : {xmlList(everyType), binaryList(everyType)}) {
        const auto list = parse(bytes);
        ASSERT_TRUE(list);
        ASSERT_TRUE(list->as<Dictionary>());
        for (const auto& [key, value] : everyTypeRead()) {
            const auto* read = PropertyList::find(*list->as<Dictionary>(), key);
            EXPECT_TRUE(read && *read == value) << key;
        }
        EXPECT_EQ(list->as<Dictionary>()->size(), everyTypeRead().size());
    }
}

TEST(PropertyList, ReadsRealsUnderALocaleWithADecimalComma) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const char* comma = nullptr;
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE.utf8"})
        comma = comma ? comma : std::setlocale(LC_ALL, name);
    const auto list = parse(xmlList("<real>1.5</real>"));
    std::setlocale(LC_ALL, before.c_str());
    if (!comma)
        GTEST_SKIP() << "no such locale is installed";
    EXPECT_EQ(list, Value{1.5});
}

TEST(PropertyList, IsAnErrorOrCompleteWhenTruncated) {
    const Value whole{everyTypeRead()};
    for (const auto& bytes : {xmlList(everyType), binaryList(everyType)}) {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const auto list = parse(std::string_view(bytes).substr(0, length));
            EXPECT_TRUE(!list || *list == whole) << length;
        }
    }
}

TEST(PropertyList, SurvivesAnyDamagedByte) {
    for (const auto& bytes : {xmlList(everyType), binaryList(everyType)})
        for (std::size_t place = 0; place < bytes.size(); ++place)
            for (const char damage : {'\0', '<', '"', '\x13', '\xA1', '\xFF'}) {
                std::string damaged = bytes;
                damaged[place] = damage;
                std::ignore = parse(damaged);
            }
}

TEST(PropertyList, RefusesListsThatExhaustTheStackOrTheMemory) {
    constexpr auto depth = PropertyList::maximumDepth;
    EXPECT_TRUE(parse(test::nestedXml(depth)));
    EXPECT_TRUE(parse(test::nestedBinary(depth)));

    std::vector<std::string> doubling;
    for (char i = 1; i <= 40; ++i)
        doubling.push_back("\xA2"s + i + i);
    doubling.push_back("\x09");
    const std::string large = "\x4F\x12\0\x10\0\0"s + std::string(1 << 20, 'x');
    std::string many;
    for (std::size_t i = 0; i <= PropertyList::maximumNodes; ++i)
        many += "<true/>";
    std::string repeated;
    for (int i = 0; i < 10'000; ++i)
        repeated += "<key>" + std::to_string(i % 5'000) + "</key><true/>";
    std::string references;
    for (int i = 0; i < 100'000; ++i)
        references += "&lt;";

    const std::pair<const char*, std::string> refused[] = {
        {"one level more, XML", test::nestedXml(depth + 1)},
        {"one level more, binary", test::nestedBinary(depth + 1)},
        {"10,000 levels, XML", test::nestedXml(10'000)},
        {"10,000 levels, binary", test::nestedBinary(10'000)},
        {"arrays that hold an array twice", assembledList(doubling)},
        {"one large object a hundred times",
         assembledList({"\xAF\x10\x64"s + std::string(100, '\1'), large})},
        {"many elements", xmlList("<array>" + many + "</array>")},
        {"keys that repeat", xmlList("<dict>" + repeated + "</dict>")},
        {"keys that repeat in an empty root", xmlList("<dict/>" + repeated)},
        {"character references that take quadratic time",
         xmlList("<string>" + references + "</string>")},
        {"a large file", std::string(PropertyList::maximumSize + 1, ' ')},
    };
    for (const auto& [name, bytes] : refused) {
        const auto list = parse(bytes);
        ASSERT_FALSE(list) << name;
        EXPECT_EQ(list.error(), Failure::beyondLimits) << name;
    }
}

TEST(PropertyList, FindsTheDepthDespiteQuotesCommentsAndDeclarations) {
    std::string elements;
    for (int i = 0; i < 5'000; ++i)
        elements += "<array a=\"</array>\"><!-- </array> --><?x </array> \"?>\" ?>";
    for (const auto& bytes : {xmlList(elements), "<!DOCTYPE x [ \"]>\" ]>" + elements,
                              "\xEF\xBB\xBF" + xmlList(elements)})
        EXPECT_EQ(parse(bytes), std::unexpected(Failure::beyondLimits));
}

TEST(PropertyList, RefusesDamagedStructures) {
    std::string liar = binaryList("<array><string>text</string></array>");
    std::vector<std::pair<std::string, std::string>> refused{
        {"empty", ""},
        {"a word", "property list"},
        {"unclosed", "<plist><dict><key>a</key>"},
        {"value without key", xmlList("<dict><true/></dict>")},
        {"unknown element", xmlList("<array><number>1</number></array>")},
        {"an array in itself", assembledList({"\xA1\0"s})},
        {"arrays in each other", assembledList({"\xA1\1"s, "\xA1\0"s})},
        {"a reference to no object", assembledList({"\xA1\7"s})},
        {"text longer than the file", assembledList({"\x5F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s})},
        {"a key that is no text", keyed("\x10\1"s)},
        {"a key with a NUL, which libplist aborts on", keyed("\x62\0a\0\0"s)},
        {"a NUL in XML", xmlList("<string>a\0b</string>"s)},
    };
    // The fields of the trailer: sizes of offsets and references, number of objects, root, offset
    // of the table.
    for (const std::size_t back : {26U, 25U, 24U, 16U, 8U})
        for (const char value : {'\0', '\x7F', '\xFF'}) {
            std::string changed = liar;
            changed[changed.size() - back] = value;
            if (changed != liar)
                refused.emplace_back("trailer " + std::to_string(back), changed);
        }
    for (const auto& [name, bytes] : refused)
        EXPECT_FALSE(parse(bytes)) << name;
}

TEST(PropertyList, ConvertsTextThatIsNotUtf8) {
    const auto list = parse(assembledList({"\xD1\1\2"s, "\x51\xFF"s,
                                           "\x52"
                                           "a\xE9"s}));
    EXPECT_EQ(list, (Value{Dictionary{{"\uFFFD"
                                       "FF",
                                       {"a\uFFFD"
                                        "E9"s}}}}));
}

TEST(PropertyList, ReadsTheCorpusOfAnotherWriter) {
    const std::filesystem::path corpus = TIDEMARK_FIXTURES "/property-lists";
    const auto read = [](const std::filesystem::path& file) { return parse(test::contents(file)); };
    for (const std::string name : {"bundle", "definition"}) {
        const auto xml = read(corpus / "accepted" / (name + "-xml.plist"));
        const auto binary = read(corpus / "accepted" / (name + "-binary.plist"));
        EXPECT_TRUE(xml && xml == binary) << name;
    }
    for (const auto& file : std::filesystem::directory_iterator(corpus / "refused"))
        EXPECT_FALSE(read(file.path())) << file.path();
}
