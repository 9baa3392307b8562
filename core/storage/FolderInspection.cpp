#include "core/storage/FolderInspection.h"

#include "core/base/Arithmetic.h"
#include "core/base/Collation.h"

#include <algorithm>

namespace tidemark::FolderInspection {

namespace {

using Node = FolderInspectionNode;

struct Pair {
    const Node* before = nullptr;
    const Node* after = nullptr;
};

std::map<std::string_view, Pair> childrenByPath(const Node* before, const Node* after) {
    std::map<std::string_view, Pair> pairs;
    const auto add = [&](const Node* parent, const Node* Pair::* side) {
        if (parent && parent->children)
            for (const Node& child : *parent->children)
                pairs[child.path].*side = &child;
    };
    add(before, &Pair::before);
    add(after, &Pair::after);
    return pairs;
}

/// The node of one side: `own` if it is not null. Otherwise a node of 0 bytes with the path and
/// name of `other` if `parent` lists all its children, or nothing if it does not.
std::optional<Node> sideOf(const Node* own, const Node& other, const Node* parent) {
    if (own)
        return *own;
    if (!parent || !parent->childrenComplete)
        return std::nullopt;
    Node absent;
    absent.path = other.path;
    absent.name = other.name;
    absent.bytes = 0;
    absent.measuredAt = parent->measuredAt;
    absent.children.emplace();
    absent.childrenComplete = true;
    return absent;
}

std::int64_t magnitude(const FolderInspectionRow& row) {
    if (!row.beforeBytes && !row.afterBytes)
        return 0;
    if (row.beforeBytes && row.afterBytes)
        return distanceBetween(*row.beforeBytes, *row.afterBytes);
    return distanceBetween(row.beforeBytes ? *row.beforeBytes : *row.afterBytes, 0);
}

std::int64_t sizeOf(const FolderInspectionRow& row) {
    return row.afterBytes ? *row.afterBytes : row.beforeBytes.value_or(0);
}

} // namespace

std::vector<FolderInspectionRow> rows(const FolderInspectionNode* before,
                                      const FolderInspectionNode* after) {
    std::vector<FolderInspectionRow> rows;
    for (const auto& [path, pair] : childrenByPath(before, after)) {
        const Node& shown = pair.after ? *pair.after : *pair.before;
        auto& row = rows.emplace_back();
        row.id = path;
        row.name = shown.name;
        row.before = sideOf(pair.before, shown, before);
        row.after = sideOf(pair.after, shown, after);
        row.beforeBytes = row.before ? row.before->bytes : std::nullopt;
        row.afterBytes = row.after ? row.after->bytes : std::nullopt;
    }
    const Collation collation;
    std::ranges::sort(rows, [&](const auto& a, const auto& b) {
        if (magnitude(a) != magnitude(b))
            return magnitude(a) > magnitude(b);
        if (sizeOf(a) != sizeOf(b))
            return sizeOf(a) > sizeOf(b);
        const int order = collation.compare(a.name, b.name);
        return order != 0 ? order < 0 : a.id < b.id;
    });
    return rows;
}

} // namespace tidemark::FolderInspection
