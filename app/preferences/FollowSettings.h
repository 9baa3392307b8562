#pragma once

#include "app/preferences/PreferenceKeys.h"

#include <tuple>
#include <utility>

namespace tidemark {

/// Calls `use` whenever `read` returns another value than before for one of `keys`, until `context`
/// is destroyed. The call comes from the event loop, once for several changed keys. `preferences`
/// must outlive `context`.
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
