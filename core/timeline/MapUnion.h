#pragma once

#include <map>

namespace tidemark {

/// Calls `visit(key, before, after)` for each key of two maps, in order, with a null pointer for
/// the side that lacks the key.
template <class Key, class Value, class Visit>
void forEachInUnion(const std::map<Key, Value>& before, const std::map<Key, Value>& after,
                    Visit visit) {
    auto left = before.begin();
    auto right = after.begin();
    while (left != before.end() || right != after.end()) {
        const int order = left == before.end()   ? 1
                          : right == after.end() ? -1
                                                 : left->first.compare(right->first);
        const auto& key = order <= 0 ? left->first : right->first;
        visit(key, order <= 0 ? &left->second : nullptr, order >= 0 ? &right->second : nullptr);
        if (order <= 0)
            ++left;
        if (order >= 0)
            ++right;
    }
}

} // namespace tidemark
