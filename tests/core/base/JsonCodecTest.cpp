#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <rapidcheck/gtest.h>

using namespace tidemark;

namespace {

template <class T>
std::string failureOf(std::string_view document) {
    try {
        json::decode<T>(document);
        return "decoded";
    } catch (const json::DecodingError& error) {
        return error.what();
    }
}

std::string repeated(std::string_view piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i)
        text += piece;
    return text;
}

constexpr int deep = 100'000;

/// For the assertions below, which test the parts of the compile-time checks of `fieldsOf` and
/// `Field`.
struct Counted {
    std::optional<std::string> text;
    Shared<std::map<std::string, std::int64_t>> sizes;
    std::vector<std::optional<bool>> flags;
    static constexpr auto fields() {
        return std::tuple{Field{"text", &Counted::text, Shown},
                          Field{"sizes", &Counted::sizes, Shown}, Field{"flags", &Counted::flags}};
    }
};
static_assert(json::detail::hasMembers<Counted, 3> && !json::detail::hasMembers<Counted, 4>);
static_assert(!json::detail::areDistinct(std::tuple{Field{"a", &Counted::text, Shown},
                                                    Field{"b", &Counted::text, Shown}}));
template <class... T>
constexpr bool allMayHoldText = (json::detail::mayHoldText<T> && ...);
static_assert(allMayHoldText<std::string, Data, std::optional<std::string>, std::set<std::string>,
                             OptionalShared<std::map<std::string, std::int64_t>>>);
template <class... T>
constexpr bool noneMayHoldText = !(json::detail::mayHoldText<T> || ...);
static_assert(noneMayHoldText<std::int64_t, bool, std::optional<Date>, Uuid, BackgroundItem::Kind,
                              std::vector<Shared<Counted>>, Change>);
static_assert(!std::is_convertible_v<Counted, Shared<Counted>>
              && !std::is_convertible_v<Shared<Counted>, Counted>
              && !std::is_constructible_v<Shared<Counted>, const Counted&>);

using Limits = std::numeric_limits<double>;

} // namespace

RC_GTEST_PROP(JsonCodec, KeepsEveryFiniteDoubleBitForBit, (std::uint64_t pattern)) {
    const auto number = std::bit_cast<double>(pattern * 0x9E3779B97F4A7C15U);
    RC_PRE(number - number == 0);
    const double back = json::decode<double>(json::encoded(number));
    RC_ASSERT(std::bit_cast<std::uint64_t>(back) == std::bit_cast<std::uint64_t>(number));
}

RC_GTEST_PROP(JsonCodec, ReadsRepeatedValuesAsIfEachWereParsed,
              (const std::vector<std::pair<bool, bool>>& choices)) {
    std::vector<Shared<FolderSize>> folders;
    for (const auto& [isLarge, isMeasured] : choices) {
        FolderSize folder;
        folder.path = "/data";
        folder.breakdown.emplace({{"a\"}", 1}, {"b", isLarge ? 22 : 2}});
        if (isMeasured)
            folder.measuredAt = Date{794001800};
        folders.emplace_back(std::move(folder));
    }
    const std::string text = json::encoded(folders);
    for (const std::string& document : {text, nlohmann::json::parse(text).dump(2)}) {
        const auto read = json::decode<std::vector<Shared<FolderSize>>>(document);
        RC_ASSERT(read == folders);
        for (std::size_t i = 1; i < read.size(); ++i)
            RC_ASSERT(read[i].sameObject(read[i - 1]) == (choices[i] == choices[i - 1]));
    }
}

TEST(JsonCodec, WritesTheShortestFormOfNumbers) {
    const std::pair<double, const char*> cases[] = {
        {0, "0"},
        {-0.0, "-0.0"},
        {794001800, "794001800"},
        {-0.25, "-0.25"},
        {5e-324, "5e-324"},
        {1e308, "1e+308"},
        {Limits::max(), "1.7976931348623157e+308"},
    };
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(json::encoded(number), text);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(json::decode<double>(text)),
                  std::bit_cast<std::uint64_t>(number));
    }
    for (const double number : {Limits::infinity(), Limits::quiet_NaN()})
        EXPECT_THROW(json::encoded(number), Error);
    for (const std::int64_t number : {INT64_MIN, INT64_MAX})
        EXPECT_EQ(json::decode<std::int64_t>(json::encoded(number)), number);
}

TEST(JsonCodec, WritesAnyBytesAsValidText) {
    const std::pair<std::string, const char*> cases[] = {
        {"\xFFtrash\xC3", "\"\uFFFDtrash\uFFFD\""},
        {"\xED\xA0\x80", "\"\uFFFD\uFFFD\uFFFD\""},
        {std::string("\0\x1F\"\\\n\x7F", 6), R"("\u0000\u001f\"\\\n\u007f")"},
        {"é 😀", "\"é 😀\""},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(json::encoded(text), expected);
        Snapshot snapshot;
        test::add(snapshot.applications, test::application(text));
        snapshot.folders.emplace_back(test::folder("/a", 1, {{text, 1}}));
        EXPECT_TRUE(nlohmann::json::accept(json::encoded(snapshot)));
    }
}

TEST(JsonCodec, ReportsThePlaceAndTheKindOfAnError) {
    using Json = nlohmann::json;
    Journal sample = test::fullJournal();
    sample.snapshots.assign(4, sample.snapshots.front());
    const Json good = Json::parse(json::encoded(sample));
    const std::tuple<const char*, Json, const char*> cases[] = {
        {"/snapshots/3/coverage", Json::object({{"applicationRoots", Json::array()}}),
         "snapshots[3].coverage: the required key \"backgroundRoots\" is missing"},
        {"/snapshots/3/coverage/applicationRoots/0", 1,
         "snapshots[3].coverage.applicationRoots[0]: expected text, found a number"},
        {"/snapshots/0/folders/0/breakdown/text", 1.5,
         "snapshots[0].folders[0].breakdown[\"text\"]: expected a whole number of 64 bits, found "
         "1.5"},
        {"/snapshots/0/folders/0/bytes", 18446744073709551615U,
         "snapshots[0].folders[0].bytes: expected a whole number of 64 bits, "
         "found 18446744073709551615"},
        {"/snapshots/0/backgroundItems/0/kind", std::string("Cron\n\0\x7F", 7),
         "snapshots[0].backgroundItems[0].kind: unknown value \"Cron\uFFFD\uFFFD\uFFFD\""},
        {"/snapshots/0/id", "no-uuid", "snapshots[0].id: expected a UUID, found text"},
        {"/events/0/memory/payload", "no base64",
         "events[0].memory.payload: expected base64 data, found text"},
        {"/events/0/changes/0", Json::object(),
         "events[0].changes[0]: Invalid number of keys found, expected one."},
        {"/events/0/systemActivity/networkChange/before/interfaces/0", "Token Ring",
         "events[0].systemActivity.networkChange.before.interfaces[0]: "
         "unknown value \"Token Ring\""},
        {"/baselines/0/snapshot", nullptr, "baselines[0].snapshot: expected an object, found null"},
    };
    for (const auto& [place, value, message] : cases) {
        Json document = good;
        document[Json::json_pointer(place)] = value;
        EXPECT_EQ(failureOf<Journal>(document.dump()), message);
    }
    const std::string repeatedThenCut = repeated(R"({"a":1},)", 3);
    using Sizes = std::vector<Shared<SizeByName>>;
    EXPECT_EQ(failureOf<Sizes>("[" + repeatedThenCut + "?]"), "[2]: not valid JSON at byte 26");
    EXPECT_EQ(failureOf<Sizes>("[" + repeatedThenCut + R"({"a":""}])"),
              "[3][\"a\"]: expected a whole number of 64 bits, found text");
}

TEST(JsonCodec, AcceptsExactlyOneKnownCaseOfAChange) {
    const char* invalid = "Invalid number of keys found, expected one.";
    const std::string trash = R"("trashBecameEmpty":{"path":"/t","previousItemCount":2})";
    const std::pair<std::string, std::string> cases[] = {
        {"{}", invalid},
        {R"({"applicationMoved":{}})", invalid},
        {"{" + trash + R"(,"metadataChanged":{}})", invalid},
        {"{" + trash + "," + trash + "}", invalid},
        {"{" + trash + R"(,"later":[{}]})", "decoded"},
        {R"({"metadataChanged":{}})", "decoded"},
        {R"({"metadataChanged":{"before":null}})", "decoded"},
        {R"({"metadataChanged":null})", "metadataChanged: expected an object, found null"},
        {R"({"trashBecameEmpty":{"path":"/t"}})",
         "trashBecameEmpty: the required key \"previousItemCount\" is missing"},
        {R"({"applicationInstalled":{"bundleID":"a"}})",
         "applicationInstalled: the required key \"_0\" is missing"},
        {R"([])", "expected an object with one key, found an array"},
    };
    for (const auto& [document, outcome] : cases)
        EXPECT_EQ(failureOf<Change>(document), outcome) << document;
    EXPECT_EQ(json::encoded(Change(change::MetadataChanged{})), R"({"metadataChanged":{}})");
}

TEST(JsonCodec, UsesTheLastOfTwoEqualKeys) {
    const auto item = json::decode<FolderSize>(
        R"({"path":"/a","name":"A","bytes":1,"breakdown":{"x":1,"y":1,"x":2},"itemCount":3,
            "bytes":2,"breakdown":{"z":1,"z":5},"itemCount":null,"measuredAt":null,
            "measuredAt":4})");
    EXPECT_EQ(item.bytes, 2);
    EXPECT_EQ(item.breakdown, (std::map<std::string, std::int64_t>{{"z", 5}}));
    EXPECT_FALSE(item.itemCount);
    EXPECT_EQ(item.measuredAt, Date{4});
    const auto counts = json::decode<std::map<std::string, Counted>>(
        R"({"a":{"text":"t","sizes":{},"flags":[true]},"a":{"sizes":{},"flags":[]}})");
    EXPECT_FALSE(counts.at("a").text);
    EXPECT_TRUE(counts.at("a").flags.empty());
    EXPECT_EQ(
        json::decode<Coverage>(
            R"({"applicationRoots":["/b","/a","/b"],"backgroundRoots":[],"issues":["i","i"]})")
            .applicationRoots,
        (std::set<std::string>{"/a", "/b"}));
}

TEST(JsonCodec, IgnoresUnknownKeysHoweverDeep) {
    const auto labelBehind = [](const std::string& unknown) {
        const std::string known = R"("version":"14","build":"B")";
        return json::decode<OperatingSystemObservation>("{\"later\":" + unknown + "," + known + "}")
            .label();
    };
    const std::string values[] = {"[{\"version\":1},[]]",
                                  "\"\\u0000\"",
                                  "1e-400",
                                  "-0",
                                  std::string(30, '9'),
                                  repeated("[", deep) + repeated("]", deep),
                                  repeated("{\"a\":", deep) + "1" + repeated("}", deep)};
    for (const std::string& unknown : values)
        EXPECT_EQ(labelBehind(unknown), "14 (B)");
}

TEST(JsonCodec, RefusesHostileDocuments) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "the document is empty"},
        {"  ", "not valid JSON at byte 3"},
        {repeated("[", deep), "expected an object, found an array"},
        {repeated("{\"later\":", deep), "[\"later\"]: not valid JSON at byte 900001"},
        {R"({"version":"14"}})", "not valid JSON at byte 17"},
        {"{\"version\":\"14\"}" + std::string(1, '\0') + "{", "not valid JSON at byte 17"},
        {R"({"version":"14)"
         "\xC3\"}",
         "version: not valid JSON at byte 16"},
        {R"({"version":"\ud800"})", "version: not valid JSON at byte 19"},
        {R"({"version":1e999})", "version: a number is out of range at byte 16"},
        {R"({"version":NaN})", "version: not valid JSON at byte 12"},
        {R"({"version":"14",})", "version: not valid JSON at byte 17"},
    };
    for (const auto& [document, message] : cases)
        EXPECT_EQ(failureOf<OperatingSystemObservation>(document), message)
            << document.substr(0, 40);
}

TEST(JsonCodec, RefusesAJournalCutAnywhere) {
    const std::string whole = json::encoded(test::fullJournal());
    EXPECT_EQ(failureOf<Journal>(whole), "decoded");
    for (std::size_t length = 0; length < whole.size(); ++length)
        ASSERT_NE(failureOf<Journal>(std::string_view(whole).substr(0, length)), "decoded")
            << "cut to " << length << " bytes";
}
