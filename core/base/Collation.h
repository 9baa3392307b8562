#pragma once

#include <memory>
#include <string_view>

namespace tidemark {

/// The order in which a person expects names in a list: that of the locale, with numbers inside
/// names by their value. Making one is dear, comparing is cheap. Not for several threads at once.
class Collation {
public:
    Collation();
    ~Collation();
    Collation(Collation&&) noexcept;
    Collation& operator=(Collation&&) noexcept;

    /// Below 0, 0 or above 0, as `a` comes before, with or behind `b`.
    int compare(std::string_view a, std::string_view b) const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation;
};

} // namespace tidemark
