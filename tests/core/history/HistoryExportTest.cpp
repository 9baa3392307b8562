#include "core/history/HistoryExport.h"

#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/history/ReportProcess.h"
#include "core/memory/MemoryEvents.h"
#include "tests/support/Observations.h"
#include "tests/support/RecordFiller.h"
#include "tests/support/SharedRecords.h"
#include "tests/support/TemporaryFolder.h"

#include <cmath>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace tidemark;
using Json = nlohmann::json;
using nlohmann::literals::operator""_json_pointer;
using Format = HistoryExport::Format;

namespace {

Event titled(const std::string& title) {
    Event event;
    event.id = "e";
    event.timestamp = Date{86'400.75};
    event.intervalStart = Date{0};
    event.title = title;
    event.symbol = "star";
    return event;
}

HistoryExport reportOf(const std::vector<Event>& events) {
    return {test::shared(events), "Timeline", Date{1}};
}

Json exported(const Event& event, bool keep) {
    return Json::parse(reportOf({event}).data(Format::json, keep)).at("events").at(0);
}

/// Evaluates a Python expression, in which the variable `file` is an open file with `bytes` as its
/// content, and returns the result.
Json readByPython(const std::string& expression, std::string_view bytes) {
    const test::TemporaryFolder folder;
    const std::string script = R"(
import csv, json, sys
def unique(pairs):
    assert len(dict(pairs)) == len(pairs), "a key comes twice"
    return dict(pairs)
def refused(constant):
    raise ValueError(constant)
file = open(sys.argv[1], encoding="utf-8", errors="strict", newline="")
json.dump()" + expression + ", sys.stdout)";
    ReportProcess process("/usr/bin/env",
                          {"python3", "-c", script, folder.write("file", bytes).native()}, 60, 1);
    const std::string output = process.readOutput(1 << 20);
    EXPECT_TRUE(process.succeeded());
    return Json::parse(output);
}

/// Collects all keys of a tree, and the values of those keys that stand for dates.
void walk(const Json& node, std::set<std::string>& keys, std::set<std::string>& dates) {
    if (node.is_object())
        for (const auto& [key, value] : node.items()) {
            keys.insert(key);
            if (key == "timestamp" || key.ends_with("At"))
                dates.insert(value.dump());
        }
    for (const Json& child : node)
        if (child.is_structured())
            walk(child, keys, dates);
}

constexpr const char* titles[] = {
    "plain",
    "=1+1",
    " =HYPERLINK(\"http://x\";\"y\")",
    "\u00A0\n-5",
    "+1",
    "@SUM(A1)",
    "-5",
    "a=b",
    "\ttab",
    "\rreturn",
    "\nline",
    "two\r\nlines, a comma; and \"quotes\"",
    "\"",
    "",
    " ",
    "\\0 \xE2\x90\x80",
    "é 😀 \u2028 \uFEFF",
    "\033]0;window\a \x7F\u0085\u009B2J \u202Egnp.exe",
    "bad \xFF\xC3(\xED\xA0\x80 end",
};

/// True when `text` has control characters: below U+0020, except those in `allowed`, or U+007F to
/// U+009F.
bool holdsControls(const std::string& text, std::string_view allowed) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        if ((byte < 0x20 && !allowed.contains(text[i])) || byte == 0x7F
            || (byte == 0xC2 && next < 0xA0))
            return true;
    }
    return false;
}

} // namespace

TEST(HistoryExport, RemovesPrivateTextsEverywhereInTheEvent) {
    const std::tuple<const char*, const char*, const char*, const char*, const char*> cases[] = {
        {"/Users/ann/x", "", "", "In /Users/ann/x: /Users/ann/x", "In [Excluded]: [Excluded]"},
        {"/a/b", "/a", "", "/a/b and /a and /a/c", "[Excluded] and [Excluded] and [Excluded]/c"},
        {"/a", "/a/b", "/a/bc", "/a/bc /a/b", "[Excluded] [Excluded]"},
        {"", "", "", "nothing", "nothing"},
        {"", "", "the", "the other", "[Excluded] o[Excluded]r"},
        {"", "", "The", "the other", "the other"},
        {"/aa", "", "Excluded", "/aa by Excluded", "[Excluded] by [Excluded]"},
        {"E", "D", "[", "ED[", "[Excluded][Excluded][Excluded]"},
        {"aa", "", "", "aaa", "[Excluded]a"},
        {"", "", "Jör\xC3", "Jör\xC3 and Jör\xFF", "[Excluded] and [Excluded]"},
    };
    for (const auto& [path, program, device, title, expected] : cases) {
        Event event = titled(title);
        event.path = path;
        BackgroundItem item = test::agent("x");
        item.program = program;
        event.changes = {change::BackgroundAdded{{Shared(std::move(item))}}};
        SystemActivity activity;
        EnvironmentActivity named;
        named.deviceName = device;
        activity.environmentActivity.emplace(std::move(named));
        event.systemActivity.emplace(std::move(activity));
        EXPECT_EQ(exported(event, false).at("title"), expected) << title;
        EXPECT_EQ(exported(event, true).at("path"), path);
    }
}

TEST(HistoryExport, RemovesPrivateTextsFromKeysAndPayloads) {
    Event event = titled("Backup joined Home, clip one");
    event.subtitle = "of Disk from https://x.example/a";
    SystemActivity activity;
    WiFiContext network;
    network.networkName = "Home";
    activity.wifiContext.emplace(std::move(network));
    EnvironmentActivity mounted;
    mounted.volume.emplace().name = "Backup";
    activity.environmentActivity.emplace(std::move(mounted));
    event.systemActivity.emplace(std::move(activity));
    VolumeContext volume;
    volume.name = "Disk";
    event.volumeContext.emplace(std::move(volume));
    MemoryRecord memory;
    memory.title = "clip one";
    memory.sourceURL = "https://x.example/a";
    event.memory.emplace(std::move(memory));
    event.changes = {change::FolderSizeChanged{
        {Shared(test::folder("/data", 1)),
         Shared(test::folder(
             "/data", 2,
             {{"/data", 5}, {"/data/a", 1}, {"Disk", 6}, {"Home", 7}, {"id", 3}, {"path", 4}}))}}};

    const Json report =
        Json::parse(reportOf({event, titled("Home, Disk and /data")}).data(Format::json, false));
    const Json& cleaned = report.at("events").at(0);
    EXPECT_EQ(cleaned.at("title"), "[Excluded] joined [Excluded], [Excluded]");
    EXPECT_EQ(cleaned.at("subtitle"), "of [Excluded] from [Excluded]");
    EXPECT_EQ(cleaned.at("volumeContext").at("name"), "[Excluded]");
    const Json& after = cleaned.at("changes").at(0).at("folderSizeChanged").at("after");
    EXPECT_EQ(
        after.at("breakdown").dump(),
        R"({"[Excluded]":5,"[Excluded] 2":6,"[Excluded] 3":7,"[Excluded]/a":1,"id":3,"path":4})")
        << "the name of a child folder is not a field";
    EXPECT_EQ(report.at("events").at(1).at("title"), "Home, Disk and /data");
}

TEST(HistoryExport, RemovesTheFolderOfARememberedFile) {
    using Kind = MemoryRecord::Kind;
    const std::tuple<Kind, const char*, const char*> cases[] = {
        {Kind::fileOpened, "/home/ann/letter", "Last used · [Excluded], [Excluded] and /"},
        {Kind::downloaded, "/home/ann/folder/", "Downloaded · [Excluded], [Excluded] and /"},
        {Kind::fileModified, "/letter", "Modified · /, /home/ann and /"},
        {Kind::fileCreated, "letter", "Created, /home/ann and /"},
        {Kind::appLaunched, "/home/ann/Editor", "Launched, /home/ann and /"},
    };
    for (const auto& [kind, path, expected] : cases) {
        Event event = MemoryEvents::event(Shared(MemoryRecord::make(kind, Date{}, "Report", path)));
        event.subtitle += ", /home/ann and /";
        EXPECT_EQ(exported(event, false).at("subtitle"), expected);
        EXPECT_EQ(exported(event, true).at("subtitle"), event.subtitle);
    }
}

TEST(HistoryExport, OmitsOnlyInternalAndPrivateFields) {
    const auto event = test::fullSample<Event>();
    std::set<std::string> all, kept, cleaned, dates;
    walk(Json::parse(json::encoded(event)), all, dates);
    dates.clear();
    walk(exported(event, true), kept, dates);
    EXPECT_EQ(dates, std::set<std::string>{"\"2001-01-01T00:00:00Z\""});
    walk(exported(event, false), cleaned, dates);
    for (const char* key : {"id", "symbol"})
        EXPECT_EQ(all.erase(key), 1U);
    EXPECT_EQ(kept, all);
    for (const char* key : {"path", "program", "deviceName", "networkName", "text", "payload",
                            "sourceURL", "directFileSizes"})
        all.erase(key);
    // All texts of the sample are "text", which is private, so it is also replaced in keys.
    all.insert("[Excluded]");
    for (const char* key : {"textStored", "volumeContext", "wifiContext"}) {
        EXPECT_EQ(all.erase(key), 1U);
        std::string name = key;
        all.insert(name.replace(name.find("text"), 4, "[Excluded]"));
    }
    EXPECT_EQ(cleaned, all);
}

TEST(HistoryExport, WritesATableThatAStrictReaderReadsBack) {
    Event event = titled("-5 \"x\"");
    event.subtitle = "s";
    event.path = "/p";
    event.identifier = "i";
    event.changes = {change::FreeDiskSpaceChanged{{1, 2}}};
    const std::string head =
        "\"Observed At (UTC)\",\"Interval Start (UTC)\",\"Category\",\"Title\",\"Details\","
        "\"Path\",\"Identifier\",\"Importance\",\"Mode\",\"Structured Details (JSON)\"\r\n";
    const auto row = [](const std::string& path, const std::string& json) {
        return R"("2001-01-02T00:00:00Z","2001-01-01T00:00:00Z","Applications","'-5 ""x""","s",)"
               + path + R"(,"i","prominent","Timeline","{""category"":""Applications"",)"
               + R"(""changes"":[{""freeDiskSpaceChanged"":{""after"":2,""before"":1}}],)"
               + R"(""identifier"":""i"",""importance"":""prominent"",)"
               + R"(""intervalStart"":""2001-01-01T00:00:00Z"",)" + json
               + R"(""subtitle"":""s"",""timestamp"":""2001-01-02T00:00:00Z"",)"
               + "\"\"title\"\":\"\"-5 \\\"\"x\\\"\"\"\"}\"\r\n";
    };
    EXPECT_EQ(reportOf({event}).data(Format::csv, false), head + row("\"\"", ""));
    EXPECT_EQ(reportOf({event}).data(Format::csv, true),
              head + row("\"/p\"", "\"\"path\"\":\"\"/p\"\","));
    EXPECT_EQ(reportOf({}).data(Format::csv, true), head);

    std::vector<Event> events;
    for (const char* title : titles)
        events.push_back(titled(title));
    events.push_back(titled(std::string("nul\0byte", 8)));
    const std::string table = reportOf(events).data(Format::csv, false);
    EXPECT_FALSE(holdsControls(table, "\t\r\n"));
    const Json rows = readByPython("list(csv.reader(file, strict=True))", table);
    ASSERT_EQ(rows.size(), events.size() + 1);
    for (std::size_t i = 0; i < events.size(); ++i) {
        const Json& cells = rows.at(i + 1);
        ASSERT_EQ(cells.size(), 10U);
        const auto structured = Json::parse(cells.at(9).get<std::string>());
        const auto title = structured.at("title").get<std::string>();
        const bool guarded = (i > 0 && i < 7) || (i > 7 && i < 11);
        EXPECT_EQ(cells.at(3), (guarded ? "'" : "") + printable(title, "\t\r\n"));
        const bool valid = !events[i].title.starts_with("bad");
        EXPECT_EQ(title, valid ? events[i].title : "bad \uFFFD\uFFFD(\uFFFD\uFFFD\uFFFD end");
    }
}

TEST(HistoryExport, WritesADocumentThatAStrictParserReadsBack) {
    Event event = titled("a/b");
    EXPECT_EQ(
        reportOf({event}).data(Format::json, false),
        R"({
  "events": [
    {
      "category": "Applications",
      "changes": [],
      "importance": "prominent",
      "intervalStart": "2001-01-01T00:00:00Z",
      "subtitle": "",
      "timestamp": "2001-01-02T00:00:00Z",
      "title": "a/b"
    }
  ],
  "exportedAt": "2001-01-01T00:00:01Z",
  "includesPrivateDetails": false,
  "limitations": "Observed history may be incomplete. Events before installation are partial. )"
        R"(Observation intervals are not exact change times. State comparisons show endpoint )"
        R"(differences, not every intervening event. This export is not a restorable backup.",
  "mode": "Timeline",
  "schemaVersion": 1
})");
    std::vector<Event> events;
    for (const char* title : titles)
        events.push_back(titled(title));
    for (const auto& some : {std::vector<Event>(), events}) {
        const std::string text = reportOf(some).data(Format::json, true);
        EXPECT_FALSE(holdsControls(text, "\n"));
        EXPECT_EQ(
            readByPython("json.load(file, object_pairs_hook=unique, parse_constant=refused)", text),
            Json::parse(text));
    }
}

TEST(HistoryExport, ClampsDatesToTheFormat) {
    const std::pair<double, const char*> cases[] = {
        {1e15, "9999-12-31T23:59:59Z"},
        {HUGE_VAL, "9999-12-31T23:59:59Z"},
        {252'423'993'600, "9999-12-31T23:59:59Z"},
        {252'423'993'599, "9999-12-31T23:59:59Z"},
        {252'423'993'598, "9999-12-31T23:59:58Z"},
        {-63'113'904'000, "0001-01-01T00:00:00Z"},
        {-63'113'904'001, "0001-01-01T00:00:00Z"},
        {-HUGE_VAL, "0001-01-01T00:00:00Z"},
    };
    for (const auto& [seconds, written] : cases) {
        Event event = titled("x");
        event.timestamp = Date{seconds};
        EXPECT_EQ(exported(event, true).at("timestamp"), written);
        EXPECT_NE(reportOf({event}).data(Format::csv, true).find(written), std::string::npos);
    }
    const Date never{std::nan("")};
    Application app = test::application("A");
    app.modified = never;
    Event event = titled("x");
    event.changes = {change::ApplicationInstalled{{Shared(std::move(app))}}};
    HistoryExport report = reportOf({event});
    report.exportedAt = never;
    const Json document = Json::parse(report.data(Format::json, true));
    EXPECT_TRUE(document.at("exportedAt").is_null());
    EXPECT_TRUE(
        document.at("/events/0/changes/0/applicationInstalled/_0/modified"_json_pointer).is_null());
}

TEST(HistoryExport, WritesAFileCompletelyOrNotAtAll) {
    const test::TemporaryFolder folder;
    const auto path = folder / HistoryExport::fileName(Format::csv);
    EXPECT_EQ(path.filename(), "Tidemark-History.csv");
    Event endless = titled("x");
    MemoryRecord memory;
    memory.duration = HUGE_VAL;
    endless.memory.emplace(std::move(memory));
    const auto broken = reportOf({titled("x"), endless});
    for (const Format format : {Format::csv, Format::json})
        EXPECT_THROW(broken.save(path, format, true), Error);
    EXPECT_EQ(test::namesIn(folder.path()), "");

    const auto report = reportOf({titled("x")});
    report.save(path, Format::csv, true);
    EXPECT_EQ(test::modeOf(path), 0600U);
    EXPECT_EQ(test::contents(path), report.data(Format::csv, true));
    EXPECT_THROW(broken.save(path, Format::csv, true), Error);
    EXPECT_EQ(test::contents(path), report.data(Format::csv, true));
    EXPECT_EQ(test::namesIn(folder.path()), "Tidemark-History.csv");

    EXPECT_THROW(report.save(folder / "no/such/folder", Format::csv, true), Error);
    std::filesystem::create_symlink("/dev/null", folder / "device");
    for (const auto& other : {folder.makeFolder("folder"), folder / "device"})
        EXPECT_THROW(report.save(other, Format::csv, true), Error);
}
