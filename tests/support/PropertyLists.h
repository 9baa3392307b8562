#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tidemark::test {

/// An XML property list around the given elements.
std::string xmlList(std::string_view elements);
/// The same list in binary form, written by libplist.
std::string binaryList(std::string_view elements);

/// A binary list assembled from raw objects, the first of them the root, with one-byte references:
/// for lists that no library writes.
std::string assembledList(const std::vector<std::string>& objects);

/// `depth` nested arrays.
std::string nestedXml(std::size_t depth);
std::string nestedBinary(std::size_t depth);

} // namespace tidemark::test
