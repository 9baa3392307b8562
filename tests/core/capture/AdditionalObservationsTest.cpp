#include "core/capture/AdditionalObservations.h"

#include "core/base/Digest.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Observations.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using test::ManualClock;
using test::TemporaryFolder;

namespace fs = std::filesystem;

namespace {

MetadataReport cellarReport(const fs::path& cellar, double secondsPerLook = 0,
                            const std::stop_token& stop = {}) {
    ManualClock clock(secondsPerLook);
    return AdditionalObservations::collect(true, false, {},
                                           {.cellars = {cellar}, .diagnostics = {}}, clock, stop)
        .at(0);
}

MetadataReport diagnosticReport(const fs::path& folder) {
    ManualClock clock;
    return AdditionalObservations::collect(false, true, {},
                                           {.cellars = {}, .diagnostics = {folder}}, clock)
        .at(0);
}

MetadataReport configurationReport(const fs::path& path) {
    ManualClock clock;
    return AdditionalObservations::collect(false, false, {path}, {}, clock).at(0);
}

MetadataReport failed(const fs::path& scope) {
    return {scope.native(),
            {},
            false,
            "Additional history: could not completely inspect " + scope.native()
                + ". No comparison was made."};
}

} // namespace

TEST(AdditionalObservations, ReportsCellarsThenDiagnosticsThenFiles) {
    const TemporaryFolder folder;
    ManualClock clock;
    const auto reports = AdditionalObservations::collect(
        true, true, {folder / "b", folder / "a"},
        {.cellars = {folder / "two", folder / "one"}, .diagnostics = {folder / "reports"}}, clock);
    std::vector<std::string> scopes;
    for (const auto& report : reports) {
        EXPECT_EQ(report, (MetadataReport{report.scope, {}, true, {}})) << "nothing exists there";
        scopes.push_back(report.scope.substr(folder.path().native().size() + 1));
    }
    EXPECT_EQ(scopes, (std::vector<std::string>{"two", "one", "reports", "b", "a"}));
    EXPECT_TRUE(AdditionalObservations::collect(false, false, {}, {}, clock).empty());
}

TEST(AdditionalObservations, ListsInstalledVersionsOfFormulas) {
    const TemporaryFolder folder;
    for (const char* version : {"wget/1.9", "wget/1.10", "curl/8.0", "wget/.hidden", ".git/1"})
        folder.makeFolder(version);
    folder.write("curl/INSTALL", "");
    folder.makeFolder("links");
    fs::create_symlink(folder / "curl/8.0", folder / "links/8.0");
    fs::create_symlink(folder / "curl", folder / "linked");
    folder.write("file", "");
    folder.makeFolder("empty");

    const auto report = cellarReport(folder.path());

    const auto& root = folder.path().native();
    const auto kind = ObservedMetadata::Kind::homebrew;
    EXPECT_EQ(
        report,
        test::report(root, {{kind, root + "/curl", "curl", {}, {}, {}, "8.0"},
                            {kind, root + "/wget", "wget", {}, {}, {}, ".hidden, 1.10, 1.9"}}));
}

TEST(AdditionalObservations, ReportsNothingFromAnIncompleteListing) {
    const TemporaryFolder folder;
    folder.makeFolder("cellar/wget/1");
    folder.makeFolder("cellar/curl/1");
    fs::create_symlink(folder / "cellar", folder / "link");
    const auto file = folder.write("file", "");
    folder.makeFolder("part/closed/1");
    for (std::size_t i = 0; i <= AdditionalObservations::mostEntries; ++i)
        fs::create_hard_link(file, folder.makeFolder("many") / std::to_string(i));
    EXPECT_EQ(cellarReport(folder / "many"), failed(folder / "many"));
    fs::remove(folder / "many/0");
    EXPECT_TRUE(cellarReport(folder / "many").complete);

    fs::permissions(folder / "part/closed", fs::perms::none);
    const test::OrdinaryUser user(folder.path());
    for (const char* name : {"link", "file", "part"})
        EXPECT_EQ(cellarReport(folder / name), failed(folder / name));
    EXPECT_EQ(cellarReport(folder / "link/"), failed(folder / "link/"));

    // The clock is read five times: before the listing, at each formula and at each of its
    // versions.
    EXPECT_TRUE(cellarReport(folder / "cellar", 0.6).complete);
    EXPECT_EQ(cellarReport(folder / "cellar", 0.61), failed(folder / "cellar"));
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(cellarReport(folder / "cellar", 0, stop.get_token()), failed(folder / "cellar"));
}

TEST(AdditionalObservations, ReadsTheNameOfADiagnosticReport) {
    const TemporaryFolder home;
    const fs::path reports = "reports";
    struct Case {
        const char* name;
        const char* type;
        std::optional<std::string> application;
    };
    // In byte order, as they are reported.
    const Case cases[] = {
        {"-2024-05-01 A-2024-05-01.crash", "Crash report", {}},
        {"A-1-2024-05-01-2025-01-01.hang", "Hang report", "A-1"},
        {"Xcode-2024-05-01-120000.ips", "Diagnostic report", "Xcode"},
        {"Xcode_2024_05_01.crash", "Crash report", "Xcode"},
        {"a b-2024_05-01.SPIN", "Sample report", "a b"},
        {"core.my.tool.1000.0123456789abcdef0123456789abcdef.42.1700000000000000.zst",
         "Crash report", "my.tool"},
        {"short-2024-05-1.ips", "Diagnostic report", {}},
        {"stacks.ips", "Diagnostic report", {}},
    };
    for (const auto& each : cases)
        home.write((reports / each.name).native(), "");
    for (const char* unseen : {"a.diag", "a.txt", "ips", ".hidden.ips", "core.tool.1000.42"})
        home.write((reports / unseen).native(), "");
    home.makeFolder((reports / "folder.ips").native());
    fs::create_symlink(home / "file", home.path() / reports / "link.ips");

    const auto report = diagnosticReport(home.path() / reports);

    ASSERT_EQ(report.items->size(), std::size(cases));
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto& item = (*report.items)[i];
        EXPECT_EQ(item.name, cases[i].name);
        EXPECT_EQ(item.path, (home.path() / reports / cases[i].name).native());
        EXPECT_EQ(item.reportType, cases[i].type) << item.name;
        EXPECT_EQ(item.inferredApplication, cases[i].application) << item.name;
    }
    EXPECT_EQ(report.items->at(4).value, "spin");
}

TEST(AdditionalObservations, ReportsTheDigestOfAConfigurationFile) {
    const TemporaryFolder folder;
    const std::string largest(AdditionalObservations::largestConfiguration, 'x');
    const auto file = folder.write(".zshrc", largest);
    std::stop_source stop;
    stop.request_stop();
    ManualClock clock;
    auto unread = test::report(file.native(), {});
    unread.complete = false;
    unread.issue = "Selected file read failed: " + file.native();
    EXPECT_EQ(AdditionalObservations::collect(false, false, {file}, {}, clock, stop.get_token()),
              std::vector{unread});
    EXPECT_EQ(configurationReport(file),
              test::report(file.native(), {{ObservedMetadata::Kind::configuration,
                                            file.native(),
                                            "Zsh configuration",
                                            1'048'576,
                                            {},
                                            {},
                                            Sha256::hex(largest)}}));
}

TEST(AdditionalObservations, ReportsWhyAConfigurationFileWasNotRead) {
    const TemporaryFolder folder;
    const auto file = folder.write("file", "text");
    fs::create_symlink(file, folder / "link");
    ::mkfifo((folder / "pipe").c_str(), 0600);
    folder.makeFolder("folder");
    folder.write("large", std::string(AdditionalObservations::largestConfiguration + 1, 'x'));
    fs::permissions(folder.write("closed", "text"), fs::perms::none);
    folder.makeFolder("closed-folder");
    fs::permissions(folder / "closed-folder", fs::perms::none);
    const test::OrdinaryUser user(folder.path());

    const std::string notRegular = "Selected file is not a local regular file: ";
    const std::pair<const char*, std::string> cases[] = {
        {"link", notRegular},
        {"pipe", notRegular},
        {"folder", notRegular},
        {"file/below", notRegular},
        {"closed-folder/file", notRegular},
        {"closed", "Selected file could not be read: "},
        {"large", "Selected file is not a local regular file under 1 MB: "},
    };
    for (const auto& [name, issue] : cases) {
        const std::string path = (folder / name).native();
        EXPECT_EQ(configurationReport(path), (MetadataReport{path, {}, false, issue + path}));
    }
    // A system file whose status has size 0 but whose content is several megabytes.
    const std::string endless = "/proc/kallsyms";
    if (test::contents(endless).size() > AdditionalObservations::largestConfiguration) {
        EXPECT_EQ(configurationReport(endless).issue, cases[6].second + endless);
    }
}
