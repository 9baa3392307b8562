#pragma once

#include "core/base/PropertyList.h"

#include <optional>

/// A look at the outline of a list before libplist gets it. libplist 2.2 reads and frees binary
/// lists by recursion without a limit (a few megabytes of nested arrays end the process), copies a
/// shared object once per reference, takes quadratic time over character references, and aborts
/// on a key with a NUL in it. Lists that would do that are kept from it.
namespace tidemark::PropertyList {

/// The reason to refuse the bytes; absent when libplist may have them, broken or not.
std::optional<Failure> refusal(std::string_view bytes);

inline constexpr std::string_view binaryMagic = "bplist00";

} // namespace tidemark::PropertyList
