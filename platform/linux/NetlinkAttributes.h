#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <span>
#include <string_view>

namespace tidemark {

/// The attributes of a netlink message.
namespace netlinkAttributes {

/// The value at the beginning of `bytes`, which are at least as long.
template <class Value>
Value read(std::span<const std::byte> bytes) {
    Value value{};
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

/// Calls `use` with the type and the value of each attribute; ends at the first damaged one.
void forEach(std::span<const std::byte> attributes,
             const std::function<void(std::uint16_t type, std::span<const std::byte> value)>& use);

/// The value as a number of this size; 0 when it is shorter.
std::uint32_t number32(std::span<const std::byte> value);
/// The value as text, without the zero byte at its end.
std::string_view text(std::span<const std::byte> value);

} // namespace netlinkAttributes

} // namespace tidemark
