#pragma once

#include "app/preferences/PreferenceKeys.h"

#include <tuple>
#include <utility>

namespace tidemark {

/// Calls `use`, without arguments, whenever one of `keys` is read as another value than before,
/// until `context` is gone. The call comes from the event loop, once for all of them. What counts
/// is what `read` returns: a value that is stored in other words is no change, and one that follows
/// from another key is. The preferences outlive `context`.
template <class Use, class... Keys>
void followSettings(const Preferences& preferences, const QObject* context, Use use,
                    const Keys&... keys) {
    static_assert(sizeof...(Keys) > 0);
    const auto values = [&preferences, keys...] { return std::tuple(read(preferences, keys)...); };
    QObject::connect(&preferences, &Preferences::changed, context,
                     [values, use = std::move(use), last = values()]() mutable {
                         auto now = values();
                         if (now == last)
                             return;
                         last = std::move(now);
                         use();
                     });
}

} // namespace tidemark
