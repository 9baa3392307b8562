#pragma once

#include "core/base/Shared.h"

#include <iterator>
#include <utility>
#include <vector>

namespace tidemark::test {

template <class T>
std::vector<Shared<T>> shared(std::vector<T> records) {
    return {std::make_move_iterator(records.begin()), std::make_move_iterator(records.end())};
}

/// A list of shared records, from copies of its arguments.
template <class First, class... Rest>
std::vector<Shared<First>> shared(First first, Rest... rest) {
    std::vector<Shared<First>> list;
    list.emplace_back(std::move(first));
    (list.emplace_back(std::move(rest)), ...);
    return list;
}

/// Replaces a list, which snapshots may share, by a copy with one more record.
template <class T>
void add(Shared<std::vector<Shared<T>>>& list, T record) {
    auto records = *list;
    records.emplace_back(std::move(record));
    list.emplace(std::move(records));
}

} // namespace tidemark::test
