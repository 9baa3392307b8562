#pragma once

#include <chrono>
#include <compare>
#include <limits>

namespace tidemark {

/// An instant: seconds since 2001-01-01T00:00:00Z as a binary64, which is also how every stored
/// document writes it. Values are stored and compared without rounding.
struct Date {
    /// 2001-01-01T00:00:00Z in seconds since 1970.
    static constexpr double epochSince1970 = 978'307'200.0;

    double secondsSince2001 = 0;

    static constexpr Date fromUnix(double seconds) { return {seconds - epochSince1970}; }
    static Date fromSystem(std::chrono::system_clock::time_point time) {
        return fromUnix(std::chrono::duration<double>(time.time_since_epoch()).count());
    }
    static Date now() { return fromSystem(std::chrono::system_clock::now()); }
    static constexpr Date distantPast() { return {-std::numeric_limits<double>::infinity()}; }
    static constexpr Date distantFuture() { return {std::numeric_limits<double>::infinity()}; }

    constexpr double secondsSince1970() const { return secondsSince2001 + epochSince1970; }

    auto operator<=>(const Date&) const = default;
    constexpr Date operator+(double seconds) const { return {secondsSince2001 + seconds}; }
    /// Seconds from `other` to this.
    constexpr double operator-(Date other) const {
        return secondsSince2001 - other.secondsSince2001;
    }
};

} // namespace tidemark
