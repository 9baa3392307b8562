#include "app/model/ImportView.h"
#include "tests/app/support/ModelFixture.h"

#include <future>

using namespace tidemark;

namespace {

InstallationRecord record(const std::string& name, const std::string& version = "1") {
    return {name, version, test::ManualAppClock::start + -3600, "package_source_other", {}};
}

/// Rows, notices and button of a view.
std::string shown(const ImportView& view) {
    std::string text;
    for (const auto& row : view.rows)
        text += row.name + " " + row.version + (row.isImported ? " known, " : ", ");
    return text + view.notice.value_or("-") + "|" + view.skippedNotice.value_or("-") + "|"
           + view.confirmLabel + (view.canConfirm ? "" : " (disabled)");
}

} // namespace

struct HistoryImportTest : test::ModelFixture {
    HistoryImportTest() {
        installations = [this](Date now) {
            ++reports;
            asked = now;
            if (waitsFor)
                waitsFor->get_future().wait();
            if (reportFails)
                throw InstallationHistory::ImportError(
                    InstallationHistory::ImportError::Kind::reportFailed);
            return InstallationPreview{found, 0, now, now, 0};
        };
        create();
    }
    HistoryImport& imports() { return model->imports(); }
    std::string message() { return imports().initialHistoryMessage->value_or("none"); }
    std::size_t imported() {
        const auto& records = state().journal()->importedInstallations;
        return records ? records->size() : 0;
    }
    /// Starts again and returns the message about the import.
    std::string messageAfterStart() {
        restart();
        EXPECT_FALSE(imports().isImportingInitialHistory);
        EXPECT_FALSE(state().busy());
        return message();
    }
    void forget() {
        model.reset();
        std::filesystem::remove_all(data);
    }
    /// Puts a folder at the place of the journal.
    void preventSaving() {
        std::filesystem::remove(data / "journal.json");
        std::filesystem::create_directories(data / "journal.json");
    }

    std::vector<InstallationRecord> found;
    bool reportFails = false;
    std::optional<std::promise<void>> waitsFor;
    int reports = 0;
    Date asked;
};

TEST_F(HistoryImportTest, ImportsIntoANewJournalOnce) {
    const std::string tail = " from macOS. This partial history covers the last 7 days; future "
                             "captures will reveal new changes.";
    EXPECT_EQ(messageAfterStart(), "No recent installation records were available. Tidemark will "
                                   "record changes from now on.");
    EXPECT_EQ(asked, clock.now());
    EXPECT_EQ(messageAfterStart(), "none") << "also after an import that found nothing";
    EXPECT_EQ(reports, 1);

    forget();
    found = {record("keel"), record("XProtectPayloads")};
    EXPECT_EQ(messageAfterStart(), "Added 1 recent installation record" + tail);
    EXPECT_EQ(imported(), 1U) << "without routine records";
    EXPECT_EQ(state().journal()->initialHistoryImportCompletedAt, clock.now());
    EXPECT_EQ(stored(), *state().journal());

    forget();
    found.push_back(record("rudder"));
    EXPECT_EQ(messageAfterStart(), "Added 2 recent installation records" + tail);
    EXPECT_EQ(reports, 3);
}

TEST_F(HistoryImportTest, TriesAgainAfterAFailure) {
    const std::string failure = "Recent history couldn’t be imported. New changes will still be "
                                "recorded. You can retry using Import recent history…";
    preferences.set("folderSetupCompleted", false);
    reportFails = true;
    start();
    test::await(imports().importInitialHistoryIfNeeded());
    EXPECT_EQ(reports, 0) << "not while the user chooses folders";
    model->beginFolderManagement();
    test::await(model->finishFolderManagement());
    EXPECT_EQ(message(), failure);
    EXPECT_EQ(state().journal(), Journal());
    EXPECT_EQ(error(), "none");

    reportFails = false;
    preventSaving();
    test::await(imports().importInitialHistoryIfNeeded());
    EXPECT_EQ(message(), failure);
    EXPECT_EQ(state().journal(), Journal());
    std::filesystem::remove(data / "journal.json");
    test::await(imports().importInitialHistoryIfNeeded());
    EXPECT_EQ(reports, 3);
    EXPECT_EQ(state().journal()->initialHistoryImportCompletedAt, clock.now());
}

TEST_F(HistoryImportTest, DoesNotImportIntoAJournalWithContents) {
    Journal journal;
    journal.append(Shared(test::snapshot(1)), false);
    const Journal withSnapshot = journal;
    journal = {};
    journal.baselines = test::fullJournal().baselines;
    const Journal withBaseline = journal;
    journal = {};
    journal.importInstallations({record("known")});
    for (const Journal& kept : {withSnapshot, withBaseline, journal}) {
        std::filesystem::create_directories(data);
        JournalStore(data / "journal.json").save(kept);
        EXPECT_EQ(messageAfterStart(), "none");
        EXPECT_EQ(reports, 0);
        EXPECT_EQ(state().journal()->initialHistoryImportCompletedAt, std::nullopt);
    }
}

TEST_F(HistoryImportTest, APauseDuringTheReportImportsNothing) {
    waitsFor.emplace();
    found = {record("keel")};
    const auto starting = model->start();
    test::until([&] { return *imports().isImportingInitialHistory; });
    EXPECT_TRUE(state().busy());
    state().recordingMode = RecordingMode::paused;
    waitsFor->set_value();
    test::until([&] { return starting.isReady(); });
    EXPECT_FALSE(imports().isImportingInitialHistory);
    EXPECT_FALSE(state().isRunning(Operation::importing));
    EXPECT_EQ(message(), "none");
    EXPECT_EQ(state().journal(), Journal());
    EXPECT_EQ(test::await(imports().previewImport()), false);
    EXPECT_EQ(test::await(imports().importHistory(found)), std::nullopt);
    EXPECT_FALSE(imports().importPresented);
}

TEST_F(HistoryImportTest, TheControllerMayBeDestroyedDuringTheReport) {
    waitsFor.emplace();
    const auto starting = model->start();
    test::until([&] { return *imports().isImportingInitialHistory; });
    waitsFor->set_value();
    model.reset();
    EXPECT_TRUE(starting.isReady());
    EXPECT_FALSE(std::filesystem::exists(data / "journal.json"));
}

TEST_F(HistoryImportTest, PreviewsAndImportsTheSelectedRecords) {
    start();
    found = {record("keel"), record("rudder")};
    reportFails = true;
    EXPECT_TRUE(test::await(imports().previewImport()));
    EXPECT_TRUE(imports().importPresented);
    EXPECT_EQ(imports().importError->value_or("none"),
              "macOS couldn’t provide installation history. Try again; the report may have timed "
              "out or access may be unavailable.");
    reportFails = false;
    EXPECT_TRUE(test::await(imports().previewImport()));
    EXPECT_EQ(*imports().importError, std::nullopt);
    ASSERT_TRUE(imports().importPreview->has_value());
    EXPECT_FALSE(state().isRunning(Operation::importing));

    const auto completed = state().journal()->initialHistoryImportCompletedAt;
    clock.advance(1);
    model->history().setRange("day");
    EXPECT_EQ(test::await(imports().importHistory({found[0], found[0]})), 1U);
    EXPECT_FALSE(imports().importPresented);
    EXPECT_EQ(model->history().place().range(), "week");
    EXPECT_EQ(imports().importedIDs(), std::set{found[0].id()});
    EXPECT_EQ(state().journal()->initialHistoryImportCompletedAt, completed);
    EXPECT_EQ(test::await(imports().importHistory(found)), 1U);
    EXPECT_EQ(test::await(imports().importHistory(found)), 0U);
    EXPECT_EQ(stored(), *state().journal());
    EXPECT_EQ(imported(), 2U);

    const Journal before = *state().journal();
    test::await(imports().previewImport());
    preventSaving();
    EXPECT_EQ(test::await(imports().importHistory({record("hull")})), std::nullopt);
    EXPECT_TRUE(error().starts_with("History couldn’t be saved. "));
    EXPECT_EQ(state().journal(), before);
    EXPECT_TRUE(imports().importPresented);
    const auto saving = state().operations().begin(Operation::saving);
    EXPECT_FALSE(test::await(imports().previewImport()));
}

TEST_F(HistoryImportTest, AManualImportCountsAsTheInitialOne) {
    preferences.set("folderSetupCompleted", false);
    start();
    model->completeFolderManagement();
    EXPECT_EQ(test::await(imports().importHistory({})), 0U);
    EXPECT_EQ(state().journal()->initialHistoryImportCompletedAt, std::nullopt);
    EXPECT_EQ(test::await(imports().importHistory({record("keel")})), 1U);
    EXPECT_EQ(state().journal()->initialHistoryImportCompletedAt, clock.now());
}

TEST(ImportView, ShowsRowsNoticesAndTheButton) {
    const auto keel = record("keel");
    const auto rudder = record("rudder", "");
    const auto routine = record("XProtectPlist");
    const std::string none = "Import 0 Records (disabled)";
    const std::set<std::string> known{keel.id()};
    const struct {
        std::vector<InstallationRecord> records;
        std::string expected;
        std::set<std::string> known = {};
        bool includeRoutine = false, busy = false;
        std::size_t skipped = 0;
    } cases[] = {
        {{}, "No installation records found in the last 7 days.|-|" + none},
        {.records = {routine},
         .expected = "Only macOS maintenance records were found. Include them above to preview "
                     "those records.|2 malformed records in the macOS report were skipped.|"
                     + none,
         .skipped = 2},
        {.records = {routine},
         .expected = "XProtectPlist Version 1, -|-|Import 1 Record",
         .includeRoutine = true},
        {{keel, routine, rudder},
         "keel Version 1, rudder Version not recorded, -|-|Import 2 Records"},
        {.records = {keel, rudder},
         .expected = "keel Version 1 known, rudder Version not recorded, -|-|Import 1 Record "
                     "(disabled)",
         .known = known,
         .busy = true},
        {{keel, routine},
         "keel Version 1 known, These records are already in your timeline.|-|" + none,
         known},
    };
    for (const auto& c : cases) {
        const InstallationPreview preview{c.records, c.skipped, {}, {}, 0};
        EXPECT_EQ(shown(ImportView::of(preview, c.includeRoutine, c.known, c.busy)), c.expected);
    }
}
