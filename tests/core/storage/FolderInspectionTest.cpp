#include "core/storage/FolderInspection.h"

#include "tests/support/SharedRecords.h"

#include <gtest/gtest.h>

using namespace tidemark;
using Node = FolderInspectionNode;
using Sizes = std::map<std::string, std::int64_t>;
using Bytes = std::optional<std::int64_t>;

namespace {

const std::string fileGroupPath("/r/\0direct-files", 16);

StorageMeasurementRecord recordOf(const std::string& path, Bytes bytes) {
    StorageMeasurementRecord record;
    record.item.emplace(StorageMeasurementItem::directory(path, {}));
    record.bytes = bytes;
    return record;
}

FolderStorageReport reportOf(std::vector<Shared<StorageMeasurementRecord>> children,
                             std::int64_t directBytes) {
    FolderStorageReport report;
    report.path = "/r";
    report.name = "r";
    report.children.records = std::move(children);
    report.directFileBytes = directBytes;
    report.sampledAt = Date{7};
    return report;
}

/// A folder with these children; a size is absent when it is unknown.
Node parentOf(const std::vector<std::pair<std::string, Bytes>>& children, bool complete) {
    Node parent;
    parent.path = "/r";
    parent.measuredAt = Date{5};
    parent.children.emplace();
    parent.childrenComplete = complete;
    for (const auto& [name, bytes] : children) {
        auto& child = parent.children->emplace_back();
        child.path = "/r/" + name;
        child.name = name;
        child.bytes = bytes;
    }
    return parent;
}

std::string textOf(const std::vector<FolderInspectionRow>& rows) {
    std::string text;
    const auto number = [](Bytes bytes) { return bytes ? std::to_string(*bytes) : "?"; };
    for (const auto& row : rows)
        text += (text.empty() ? "" : ", ") + row.name + " " + number(row.beforeBytes) + ":"
                + number(row.afterBytes);
    return text;
}

} // namespace

TEST(FolderStorageReport, HasASizeOnlyWhenEveryChildHasOne) {
    auto measured = recordOf("/r/a", 5);
    measured.allocatedBytes = 8;
    auto report = reportOf(test::shared(measured, recordOf("/elsewhere/a", 2)), 0);
    report.directAllocatedBytes = 100;
    const auto size = report.folderSize().value();
    EXPECT_EQ(size.bytes, 7);
    EXPECT_EQ(size.breakdown, (Sizes{{"a", 7}}));
    EXPECT_FALSE(size.allocatedBytes) << "the size of one child is not known";
    EXPECT_EQ(size.measuredAt, Date{7});

    report.children.records = test::shared(measured);
    EXPECT_EQ(report.folderSize().value().allocatedBytes, 108);
    report.children.records.emplace_back(recordOf("/r/b", {}));
    EXPECT_FALSE(report.folderSize());
}

TEST(FolderInspectionNode, ShowsASizeByItsParts) {
    FolderSize size;
    size.path = "/r";
    size.bytes = 10;
    EXPECT_FALSE(Node::recorded(size).children) << "the parts are not known";
    EXPECT_FALSE(Node::recorded(size).childrenComplete);

    size.breakdown.emplace({{"Files in folder", 99}, {"sub", 4}});
    size.directFileSizes.emplace({{"one", 1}, {"two", 5}});
    const auto node = Node::recorded(size);
    ASSERT_EQ(node.children->size(), 2U);
    EXPECT_TRUE(node.childrenComplete);
    const Node& group = node.children->at(0);
    EXPECT_EQ(group.path, fileGroupPath);
    EXPECT_EQ(group.name, "Files in folder");
    EXPECT_EQ(group.bytes, 6) << "the files themselves, not the stored sum";
    EXPECT_TRUE(group.isFileGroup && group.childrenComplete);
    EXPECT_EQ(group.children->at(1).path, "/r/two");
    EXPECT_EQ(node.children->at(1).path, "/r/sub");
    EXPECT_FALSE(node.children->at(1).childrenComplete);

    EXPECT_TRUE(Node::recorded(FolderSize{}).childrenComplete) << "known to be empty";

    size.directFileSizes.emplace({});
    size.breakdown.emplace({{"sub", 10}});
    const auto withoutFiles = Node::recorded(size);
    ASSERT_EQ(withoutFiles.children->size(), 2U) << "it is known that there are no files";
    EXPECT_TRUE(withoutFiles.children->at(0).isFileGroup);
    EXPECT_EQ(withoutFiles.children->at(0).bytes, 0);
}

TEST(FolderInspectionNode, UsesTheBestRecordOfASnapshot) {
    Snapshot snapshot;
    EXPECT_EQ(Node::recorded("/r/x", snapshot).name, "x");
    EXPECT_FALSE(Node::recorded("/r", snapshot).bytes);

    snapshot.applicationStorage = StorageMeasurementReport{
        test::shared(recordOf("/r/a", 5), recordOf("/r/b", 6), recordOf("/rest/c", {})), Date{9}};
    const auto partial = Node::recorded("/r", snapshot);
    EXPECT_FALSE(partial.bytes);
    EXPECT_EQ(partial.recordedSubtotal, 11);
    EXPECT_TRUE(partial.issue->starts_with("≥ shows the subtotal"));
    EXPECT_EQ(partial.children->size(), 2U);
    snapshot.coverage.applicationRoots.emplace({"/r", "/rest"});
    EXPECT_EQ(Node::recorded("/r", snapshot).bytes, 11);
    EXPECT_TRUE(Node::recorded("/r", snapshot).issue->starts_with("Application bundles only;"));
    EXPECT_FALSE(Node::recorded("/rest", snapshot).bytes) << "one is not measured";
    snapshot.coverage.excludedPaths.emplace({"/rest/d"});
    EXPECT_TRUE(Node::recorded("/r", snapshot).bytes);
    snapshot.coverage.excludedPaths.emplace({"/r/d"});
    EXPECT_FALSE(Node::recorded("/r", snapshot).bytes);

    FolderSize size;
    size.path = "/r";
    size.bytes = 3;
    snapshot.folders = test::shared(size);
    EXPECT_EQ(Node::recorded("/r", snapshot).bytes, 3);

    auto cut = recordOf("/r/cut", 5);
    cut.breakdown.emplace({{"x", 5}});
    auto whole = cut;
    cut.breakdownComplete = false;
    snapshot.folderStorage = {{reportOf(test::shared(cut, whole, recordOf("/r/c", {})), 2)}};
    const auto node = Node::recorded("/r", snapshot);
    EXPECT_FALSE(node.bytes);
    EXPECT_EQ(node.recordedSubtotal, 12);
    EXPECT_EQ(node.issue, "Some child folders have no completed measurement.");
    ASSERT_EQ(node.children->size(), 4U);
    EXPECT_FALSE(node.children->at(0).childrenComplete);
    EXPECT_TRUE(node.children->at(1).childrenComplete);
    EXPECT_FALSE(node.children->at(2).childrenComplete) << "its parts are not known";
    EXPECT_EQ(node.children->at(3).path, fileGroupPath);
    snapshot.folderStorage = {{reportOf(test::shared(whole), 0)}};
    EXPECT_EQ(Node::recorded("/r", snapshot).bytes, 5);
    EXPECT_EQ(Node::recorded("/r", snapshot).children->size(), 1U);
}

TEST(FolderInspection, PutsTheLargestChangeFirst) {
    const Node none = parentOf({}, true);
    const Node before = parentOf(
        {{"same", 50}, {"b 10", 1}, {"b 9", 1}, {"gone", 7}, {"unknown", {}}, {"measured now", {}}},
        true);
    const Node after = parentOf(
        {{"same", 50}, {"b 10", 5}, {"b 9", 5}, {"new", 9}, {"unknown", {}}, {"measured now", 8}},
        true);
    struct Case {
        const Node* before;
        const Node* after;
        const char* expected;
    };
    const Node partial = parentOf({{"gone", 7}}, false);
    const Case cases[] = {
        {&before, &after,
         "new 0:9, measured now ?:8, gone 7:0, b 9 1:5, b 10 1:5, same 50:50, unknown ?:?"},
        {&partial, &none, "gone 7:0"},
        {&none, &partial, "gone 0:7"},
        {nullptr, &partial, "gone ?:7"},
        {&partial, nullptr, "gone 7:?"},
        {nullptr, nullptr, ""},
    };
    for (const Case& rows : cases)
        EXPECT_EQ(textOf(FolderInspection::rows(rows.before, rows.after)), rows.expected);

    const auto other = parentOf({{"new", 1}}, true);
    EXPECT_EQ(textOf(FolderInspection::rows(&partial, &other)), "gone 7:0, new ?:1");
    const auto absent = FolderInspection::rows(&none, &other).at(0).before.value();
    EXPECT_EQ(absent.measuredAt, Date{5});
    EXPECT_TRUE(absent.children && absent.childrenComplete);
}
