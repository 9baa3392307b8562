#pragma once

#include "core/base/PropertyList.h"

#include <optional>

/// Checks the structure of a list before libplist parses it. libplist 2.2 reads binary lists and
/// frees all lists by unlimited recursion (200,000 nested arrays crash the process), copies a
/// shared object once per reference, takes quadratic time over character references and repeated
/// keys, and aborts on a key that contains a NUL. Such lists are refused here.
namespace tidemark::PropertyList {

/// Why the bytes are refused; absent when libplist can parse them safely, be they valid or not.
std::optional<Failure> refusal(std::string_view bytes);

inline constexpr std::string_view binaryMagic = "bplist00";

} // namespace tidemark::PropertyList
