#include "tests/app/support/ModelFixture.h"
#include "tests/support/HistoryEvents.h"
#include "tests/support/SharedRecords.h"
#include "tests/views/AccessibleNames.h"
#include "views/dialogs/ExportDialog.h"
#include "views/dialogs/ImportDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <fstream>

using namespace tidemark;

namespace {

bool shows(const QWidget& window, const char* text) {
    for (auto* label : window.findChildren<QLabel*>())
        if (!label->isHidden() && label->text().contains(QString::fromUtf8(text)))
            return true;
    return false;
}

/// False when a text is cut.
bool fits(const QWidget& window) {
    return std::ranges::all_of(window.findChildren<QLabel*>(), [](const QLabel* label) {
        return label->isHidden() || label->height() >= label->heightForWidth(label->width());
    });
}

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

TEST(ExportDialog, WritesWhatWasChosenAndStaysOpenWhenThatFails) {
    const test::TemporaryFolder folder;
    Event event = test::event("an event", 100);
    event.path = "/home/ada/private";
    QString target = QString::fromStdString((folder / "missing/report").native());
    TaskScope tasks;
    ExportDialog dialog(
        {.events = {Shared(Event(event))}, .mode = "Timeline", .exportedAt = Date{0}}, tasks,
        nullptr, [&](QWidget*, const QString& name, const QString&) {
            EXPECT_EQ(name, "Tidemark-History.csv");
            return target;
        });
    dialog.show();
    EXPECT_EQ(test::namelessIn(dialog), "");
    const auto save = [&] {
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
        test::until([&] { return !dialog.isSaving(); });
    };
    save();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(shows(dialog, "Couldn’t save the export. "));
    EXPECT_TRUE(fits(dialog));

    target = QString::fromStdString((folder / "report").native());
    save();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(contentsOf(folder / "report.csv").find("/home/ada/private"), std::string::npos);

    dialog.show();
    dialog.findChild<QCheckBox*>()->setChecked(true);
    save();
    EXPECT_TRUE(shows(dialog, "exists already")) << "the user chose a file of another name";
    target += ".csv";
    save();
    EXPECT_NE(contentsOf(folder / "report.csv").find("/home/ada/private"), std::string::npos);
}

using ImportDialogTest = test::ModelFixture;

TEST_F(ImportDialogTest, ImportsWhatTheUserConfirms) {
    bool isBroken = true;
    installations = [&](Date now) -> InstallationPreview {
        if (isBroken)
            throw Error("The report is broken.");
        return {
            .records = {{"Pen", "2", now, std::string(InstallationRecord::otherSource), now},
                        {"Fonts", "", now, std::string(InstallationRecord::automaticSource), now}},
            .skippedRecords = 2,
            .since = now,
            .through = now,
            .outsideWindowRecords = 0};
    };
    create();
    start();
    TaskScope tasks;
    ImportDialog dialog(*model, tasks, nullptr);
    dialog.show();
    dialog.readAgain();
    test::until([&] { return shows(dialog, "The report is broken."); });
    const auto& rows = *dialog.findChild<QListWidget*>();
    const auto confirmation = [&] {
        for (auto* button : dialog.findChildren<QPushButton*>())
            if (button->text().startsWith("Import"))
                return button;
        throw std::runtime_error("no confirmation");
    };
    EXPECT_FALSE(confirmation()->isEnabled());
    EXPECT_EQ(test::namelessIn(dialog), "");

    isBroken = false;
    for (auto* button : dialog.findChildren<QPushButton*>())
        if (button->text() == "Try Again")
            button->click();
    test::until([&] { return confirmation()->isEnabled(); });
    EXPECT_EQ(rows.count(), 1);
    EXPECT_TRUE(shows(dialog, "2 malformed records"));
    dialog.findChild<QCheckBox*>()->setChecked(true);
    EXPECT_EQ(rows.count(), 2);
    EXPECT_EQ(confirmation()->text(), "Import 2 Records");
    confirmation()->click();
    test::until([&] { return !dialog.isVisible(); });
    EXPECT_EQ(state().journal()->importedInstallations->size(), 2U);
}
