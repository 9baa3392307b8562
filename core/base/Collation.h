#pragma once

#include <memory>
#include <string_view>

namespace tidemark {

/// Compares names as people sort them: by the rules of the locale, with numbers inside names by
/// their value. Construction is expensive, comparing is cheap. Not thread-safe.
class Collation {
public:
    Collation();
    ~Collation();
    Collation(Collation&&) noexcept;
    Collation& operator=(Collation&&) noexcept;

    /// Negative, 0 or positive when `a` comes before, equals or comes after `b`.
    int compare(std::string_view a, std::string_view b) const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation;
};

} // namespace tidemark
