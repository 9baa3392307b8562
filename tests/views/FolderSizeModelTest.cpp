#include "views/folders/FolderSizeModel.h"

#include "tests/support/Observations.h"
#include "views/folders/FolderInspectorView.h"

#include <QAbstractItemModelTester>
#include <QTextDocumentFragment>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

using Table = FolderSizeTable;

/// Two captures of a folder with these children.
struct Measured {
    explicit Measured(SizeByName before, SizeByName after) {
        for (auto* sizes : {&before, &after}) {
            std::int64_t sum = 0;
            for (const auto& [name, bytes] : *sizes)
                sum += bytes;
            Snapshot snapshot = test::snapshot(static_cast<unsigned>(snapshots.size() + 1));
            snapshot.folders.emplace_back(test::folder("/home/ada/Projects", sum, *sizes));
            snapshots.emplace_back(std::move(snapshot));
        }
    }
    std::vector<FolderInspectionRow> rows() const {
        return folderSizesOf(&*snapshots[0], *snapshots[1]);
    }
    Journal journal() const {
        Journal journal;
        journal.snapshots = snapshots;
        return journal;
    }

    std::vector<Shared<Snapshot>> snapshots;
};

std::vector<Table::Header> headers() {
    return headersOf(Table::Scope::allFolders, Table::Comparison::previousCapture);
}

QString names(const QAbstractItemModel& model, const QModelIndex& parent) {
    QStringList all;
    for (int row = 0; row < model.rowCount(parent); ++row)
        all += model.index(row, 0, parent).data().toString();
    return all.join(u' ');
}

} // namespace

TEST(FolderSizeModel, LoadsChildrenWhenARowIsOpenedAndKeepsThemInAnyOrder) {
    const Measured measured({{"a", 5'000}, {"b", 1'000}, {"c", 9'000}},
                            {{"a", 1'000}, {"b", 7'000}, {"c", 9'001}});
    FolderSizeModel model;
    model.show(measured.rows(), headers());
    const QModelIndex root = model.index(0, 0);
    EXPECT_EQ(model.rowCount(root), 0);
    ASSERT_TRUE(model.canFetchMore(root));
    model.fetchMore(root);
    EXPECT_EQ(names(model, root), "b a c");
    EXPECT_EQ(root.data(Qt::AccessibleDescriptionRole), "Toggle subfolder sizes");

    // It opens every row itself, which a model must not do while it is being reset.
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QPersistentModelIndex child = model.index(0, 0, root);
    for (const auto& [section, order, expected] :
         std::initializer_list<std::tuple<int, Qt::SortOrder, const char*>>{
             {0, Qt::AscendingOrder, "a b c"},
             {2, Qt::DescendingOrder, "c b a"},
             {3, Qt::AscendingOrder, "a c b"}}) {
        model.sort(section, order);
        EXPECT_EQ(names(model, model.index(0, 0)), expected);
        EXPECT_EQ(child.data().toString(), "b");
    }
}

TEST(FolderSizeModel, ShowsTheCharactersOfANameInATip) {
    const char* const name = "<b>bold</b> & <img src=x>";
    const Measured measured({{name, 5'000}}, {{name, 9'000}});
    FolderSizeModel model;
    model.show(measured.rows(), headers());
    const QModelIndex root = model.index(0, 0);
    model.fetchMore(root);
    const QString tip = model.index(0, 0, root).data(Qt::ToolTipRole).toString();
    ASSERT_TRUE(Qt::mightBeRichText(tip));
    const QString shown = QTextDocumentFragment::fromHtml(tip).toPlainText();
    EXPECT_TRUE(shown.startsWith(QString::fromUtf8(name))) << shown.toStdString();
}

TEST(FolderInspectorView, KeepsWhatIsOpenWhenNewerSizesArrive) {
    Journal journal = Measured({{"a", 1}}, {{"a", 2}}).journal();
    FolderInspectorView view;
    view.resize(600, 400);
    view.show();
    view.present(journal);
    auto& tree = *view.findChild<QTreeView*>();
    const auto isOpen = [&] { return tree.isExpanded(tree.model()->index(0, 0)); };
    ASSERT_TRUE(isOpen()) << "an only folder is open at first";
    tree.setCurrentIndex(tree.model()->index(0, 0));
    const auto later = Measured({{"a", 2}}, {{"a", 3}, {"b", 4}}).journal();
    Snapshot next = *later.snapshots.back();
    next.id = Uuid::random();
    journal.snapshots.emplace_back(std::move(next));
    view.present(journal);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(tree.model()->rowCount(tree.model()->index(0, 0)), 2);
    EXPECT_EQ(tree.currentIndex(), tree.model()->index(0, 0));
}

TEST(FolderInspectorView, OpensThousandsOfFoldersInOneLevel) {
    SizeByName many;
    for (int i = 0; i < 5000; ++i)
        many["folder \u202E\n " + std::to_string(i)] = 1000 + i;
    FolderInspectorView view;
    view.resize(600, 400);
    view.show();
    view.present(Measured(many, many).journal());
    auto& tree = *view.findChild<QTreeView*>();
    const QModelIndex root = tree.model()->index(0, 0);
    EXPECT_EQ(tree.model()->rowCount(root), 5000);
    EXPECT_FALSE(view.grab().isNull());
    EXPECT_FALSE(tree.model()->index(0, 0, root).data().toString().contains(u'\n'));
}
