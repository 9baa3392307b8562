#include "views/folders/FolderMapView.h"

#include "tests/support/Observations.h"
#include "views/folders/FolderInspectorView.h"
#include "views/folders/FolderMapPainter.h"
#include "views/folders/FolderSizeModel.h"

#include <QAccessible>
#include <QImage>
#include <QPainter>
#include <QTest>
#include <QTreeView>
#include <set>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

/// Two folders, of which one grew by one of its parts.
struct Inspector {
    Inspector() {
        for (const std::int64_t target : {1'000'000, 6'000'000}) {
            Snapshot snapshot = test::snapshot(static_cast<unsigned>(target / 1'000'000));
            snapshot.folders.emplace_back(test::folder("/home/ada/Projects", target + 4'000'000,
                                                       {{"target", target}, {"docs", 4'000'000}}));
            snapshot.folders.emplace_back(
                test::folder("/home/ada/Music", 3'000'000, {{"live", 3'000'000}}));
            journal.snapshots.emplace_back(std::move(snapshot));
        }
        view.resize(900, 500);
        view.show();
        view.present(journal);
        QCoreApplication::processEvents();
    }
    FolderMapView& map() { return *view.findChild<FolderMapView*>(); }
    QTreeView& table() { return *view.findChild<QTreeView*>(); }
    QString chosen() { return table().currentIndex().siblingAtColumn(0).data().toString(); }
    /// What a screen reader says of the tile that the keyboard is at.
    QString spoken() {
        auto* all = QAccessible::queryAccessibleInterface(&map());
        auto* tile = all ? all->focusChild() : nullptr;
        return tile ? tile->text(QAccessible::Name) : QString();
    }

    Journal journal;
    FolderInspectorView view;
};

} // namespace

TEST(FolderMapView, ChoosesTheSameFolderAsTheTable) {
    Inspector inspector;
    auto& map = inspector.map();
    ASSERT_EQ(map.partCount(), 5) << "two folders and their parts";
    inspector.table().setCurrentIndex(inspector.table().model()->index(1, 0));
    ASSERT_GE(map.currentPart(), 0);
    EXPECT_EQ(map.partText(map.currentPart()), "Music, 3 MB, no change");
    for (int part = 0; part < map.partCount(); ++part) {
        QTest::mouseClick(&map, Qt::LeftButton, {}, map.partArea(part).topLeft() + QPoint(5, 5));
        EXPECT_EQ(map.currentPart(), part);
        EXPECT_TRUE(map.partText(part).startsWith(inspector.chosen())) << part;
    }
}

TEST(FolderMapPainter, PaintsThePatternOfAChangeOnlyOnClosedFolders) {
    for (const bool isOpen : {false, true})
        for (const bool isHovered : {false, true}) {
            QImage image(200, 100, QImage::Format_RGB32);
            QPainter painter(&image);
            const FolderMapPainter tiles(painter, {.palette = {}, .font = {}});
            tiles.draw({.area = {},
                        .tile = {.id = "a",
                                 .name = "A",
                                 .bytes = 2,
                                 .change = 1,
                                 .trend = FolderMap::Trend::grew},
                        .isOpen = isOpen},
                       image.rect(), isHovered);
            std::set<QRgb> colours;
            for (int x = 10; x < 190; ++x)
                for (int y = 70; y < 90; ++y)
                    colours.insert(image.pixel(x, y));
            EXPECT_EQ(colours.size() == 1, isOpen) << isHovered;
        }
}

TEST(FolderMapView, MovesByKeyboardAndReportsThePositionToScreenReaders) {
    Inspector inspector;
    auto& map = inspector.map();
    map.setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(inspector.spoken(), "target, 6 MB, grew by 5 MB") << "the largest one is first";
    QTest::keyClick(&map, Qt::Key_Backspace);
    EXPECT_EQ(inspector.spoken(), "Projects, 10 MB, grew by 5 MB");
    QTest::keyClick(&map, Qt::Key_Return);
    EXPECT_EQ(map.partCount(), 2) << "its parts alone";
    QTest::keyClick(&map, Qt::Key_Backspace);
    EXPECT_EQ(map.partCount(), 5);
    EXPECT_EQ(inspector.chosen(), "Projects");
}

TEST(FolderMapView, HasAnAccessibleChildForEachTile) {
    Inspector inspector;
    auto* all = QAccessible::queryAccessibleInterface(&inspector.map());
    ASSERT_TRUE(all);
    EXPECT_EQ(all->text(QAccessible::Name), "Map of Folder Sizes");
    ASSERT_EQ(all->childCount(), 5);
    auto* last = all->child(4);
    EXPECT_EQ(last->text(QAccessible::Name), "live, 3 MB, no change");
    EXPECT_EQ(all->indexOfChild(last), 4);
    EXPECT_EQ(last->rect().size(), inspector.map().partArea(4).size());
    last->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(inspector.chosen(), "live");
    EXPECT_TRUE(last->state().selected);
    inspector.map().present({});
    EXPECT_FALSE(last->isValid()) << "a tile that is not there any more";
}
