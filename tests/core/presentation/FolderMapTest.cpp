#include "core/presentation/FolderMapLayout.h"
#include "tests/support/Observations.h"

#include <algorithm>
#include <numeric>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace tidemark;
using Trend = FolderMap::Trend;

namespace {

constexpr double tolerance = 1e-6;

bool overlap(const TreemapRectangle& a, const TreemapRectangle& b) {
    return std::min(a.right(), b.right()) - std::max(a.x, b.x) > tolerance
           && std::min(a.bottom(), b.bottom()) - std::max(a.y, b.y) > tolerance;
}

FolderInspectionNode node(const std::string& name, std::optional<std::int64_t> bytes,
                          std::vector<FolderInspectionNode> children = {}) {
    FolderInspectionNode made;
    made.path = "/" + name;
    made.name = name;
    made.bytes = bytes;
    made.children = std::move(children);
    made.childrenComplete = true;
    return made;
}

FolderInspectionRow row(std::optional<FolderInspectionNode> before, FolderInspectionNode after) {
    FolderInspectionRow made;
    made.id = after.path;
    made.name = after.name;
    made.beforeBytes = before ? before->bytes : std::nullopt;
    made.afterBytes = after.bytes;
    made.before = std::move(before);
    made.after = std::move(after);
    return made;
}

/// One folder whose parts add up to its size, one that is larger than its parts, one that became
/// empty, and one whose size is not known.
FolderMap exampleMap() {
    auto partial = node("machines", {}, {node("old", 6'000'000'000)});
    partial.recordedSubtotal = 6'000'000'000;
    return FolderMap::of({
        row(node("projects", 6'000, {node("target", 2'000), node("docs", 4'000)}),
            node("projects", 10'000, {node("target", 7'000), node("docs", 3'000)})),
        row(std::nullopt, node("music", 8'000, {node("live", 5'000)})),
        row(node("trash", 9'000), node("trash", 0)),
        row(node("machines", 5), partial),
    });
}

} // namespace

RC_GTEST_PROP(TreemapLayout, FillsTheAreaInProportionToTheSizes, ()) {
    const auto sizes = *rc::gen::container<std::vector<std::int64_t>>(
        rc::gen::inRange<std::int64_t>(-2, 1'000'000'000'000));
    const TreemapRectangle area{10, 20, static_cast<double>(*rc::gen::inRange(1, 3000)),
                                static_cast<double>(*rc::gen::inRange(1, 3000))};
    const auto tiles = treemapLayout::rectangles(sizes, area);
    const double sum = std::accumulate(sizes.begin(), sizes.end(), 0.0, [](double all, auto size) {
        return all + static_cast<double>(std::max<std::int64_t>(size, 0));
    });
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const double share = sizes[i] > 0 ? static_cast<double>(sizes[i]) / sum : 0;
        RC_ASSERT(std::abs(tiles[i].area() - share * area.area()) < 1e-6 * area.area());
        RC_ASSERT(sizes[i] <= 0
                  || (tiles[i].x >= area.x - tolerance && tiles[i].y >= area.y - tolerance
                      && tiles[i].right() <= area.right() + tolerance
                      && tiles[i].bottom() <= area.bottom() + tolerance));
        for (std::size_t j = 0; j < i; ++j)
            RC_ASSERT(!overlap(tiles[i], tiles[j]));
    }
}

TEST(TreemapLayout, KeepsTilesNearToSquares) {
    // The example in the paper on squarified treemaps.
    const std::vector<std::int64_t> sizes{6, 6, 4, 3, 2, 2, 1};
    const auto tiles = treemapLayout::rectangles(sizes, {0, 0, 6, 4});
    EXPECT_EQ(tiles[0], (TreemapRectangle{0, 0, 3, 2}));
    EXPECT_EQ(tiles[1], (TreemapRectangle{0, 2, 3, 2}));
    for (const auto& tile : tiles)
        EXPECT_LT(std::max(tile.width / tile.height, tile.height / tile.width), 3);
}

TEST(TreemapLayout, CombinesWhatWouldBeTooSmallToSee) {
    using Indices = std::vector<std::size_t>;
    const struct {
        const char* what;
        std::vector<std::int64_t> sizes;
        double smallest;
        Indices own;
    } cases[] = {
        {"all are large enough", {20, 50, 30}, 10, {1, 2, 0}},
        {"the small ones", {5, 50, 5, 40}, 10, {1, 3}},
        {"small ones and the next larger one, until they are large enough together",
         {80, 17, 3},
         10,
         {0}},
        {"a large one has its own, however small the rest is", {99'999, 1}, 10, {0}},
        {"a size of zero or less has no tile", {0, -1, 100}, 10, {2}},
        {"everything is too small", {1, 1}, 101, {}},
        {"sizes of a damaged record", {INT64_MAX, INT64_MAX, 1}, 10, {0, 1}},
    };
    for (const auto& [what, sizes, smallest, own] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(treemapLayout::withOwnTile(sizes, 100, smallest), own);
    }
}

TEST(FolderMap, HasAnAreaForCompleteSizesOnly) {
    const FolderMap map = exampleMap();
    ASSERT_EQ(map.tiles.size(), 2U) << "nothing for what is empty or not known";
    const auto& projects = map.tiles[0];
    EXPECT_EQ(accessibleTextOf(projects), "projects, 10 KB, grew by 4 KB");
    EXPECT_EQ(accessibleTextOf(projects.parts[1]), "docs, 3 KB, shrank by 1 KB");
    EXPECT_EQ(projects.parts[0].strength, 1) << "the largest change of the map";
    EXPECT_EQ(map.tiles[1].trend, Trend::unknown);
    ASSERT_EQ(map.unmeasured.size(), 1U);
    EXPECT_EQ(map.unmeasured[0].text, "machines ≥ 6 GB");
    EXPECT_EQ(map.unmeasured[0].accessibleText, "machines, at least 6 GB");
    EXPECT_TRUE(map.isCompared);
    EXPECT_FALSE(FolderMap::of({row(std::nullopt, node("a", 1))}).isCompared);
}

TEST(FolderMapLayout, DividesAFolderIntoItsPartsAndTheRest) {
    const auto layout = FolderMapLayout::of(exampleMap(), {.width = 400, .height = 300});
    std::string found;
    for (const auto& [area, tile, folder, isOpen, combined] : layout.tiles)
        found += (folder ? " " : "\n") + nameOf(tile) + " " + sizeOf(tile);
    EXPECT_EQ(found,
              "\nprojects 10 KB target 7 KB docs 3 KB\nmusic 8 KB live 5 KB Not listed 3 KB");
    const auto& music = layout.tiles[3].area;
    EXPECT_NEAR(layout.tiles[0].area.area() / music.area(), 10.0 / 8, 1e-6);
    EXPECT_NEAR(layout.tiles[4].area.area() / layout.tiles[5].area.area(), 5.0 / 3, 1e-6);

    EXPECT_EQ(layout.find("/projects"), 0U);
    EXPECT_EQ(layout.find("/music", "/live"), 4U);
    EXPECT_EQ(layout.find("/music", "/target"), 3U) << "a part of another folder";
    EXPECT_EQ(layout.find("/elsewhere"), std::nullopt);
    EXPECT_EQ(layout.at(music.x + 5, music.y + 5), 3U) << "its header";
    const auto& live = layout.tiles[4].area;
    EXPECT_EQ(layout.at(live.x + 5, live.y + 5), 4U);
    EXPECT_EQ(layout.at(400, 300), std::nullopt);
}

TEST(FolderMapLayout, CombinesSmallPartsAndFindsThemThere) {
    std::vector<FolderInspectionNode> parts{node("large", 1'000'000)};
    std::int64_t sum = 1'000'000;
    for (int i = 0; i < 200; ++i) {
        parts.push_back(node("small" + std::to_string(i), 10 + i % 3));
        sum += 10 + i % 3;
    }
    const auto whole = node("all", sum, parts);
    const auto layout =
        FolderMapLayout::of(FolderMap::of({row(whole, whole)}), {.width = 300, .height = 300});
    ASSERT_EQ(layout.tiles.size(), 3U);
    const auto& rest = layout.tiles[2];
    EXPECT_EQ(nameOf(rest.tile), "200 smaller items");
    EXPECT_EQ(rest.tile.trend, Trend::same);
    EXPECT_EQ(layout.tiles[1].tile.bytes + rest.tile.bytes, sum);
    EXPECT_EQ(layout.find("/all", "/small7"), 2U);
}

TEST(FolderMapLayout, ReachesEveryTileByTheArrowKeys) {
    std::vector<FolderInspectionRow> rows;
    for (int i = 1; i < 40; ++i)
        rows.push_back(row(std::nullopt, node("f" + std::to_string(i), i * i)));
    const auto layout = FolderMapLayout::of(FolderMap::of(rows), {.width = 640, .height = 400});
    std::vector<bool> isReached(layout.tiles.size());
    std::vector<std::size_t> open{*layout.next({}, FolderMapLayout::Direction::right)};
    while (!open.empty()) {
        const std::size_t at = open.back();
        open.pop_back();
        if (isReached[at])
            continue;
        isReached[at] = true;
        using enum FolderMapLayout::Direction;
        for (const auto direction : {left, right, up, down})
            if (const auto next = layout.next(at, direction))
                open.push_back(*next);
    }
    EXPECT_EQ(std::count(isReached.begin(), isReached.end(), false), 0);
}
