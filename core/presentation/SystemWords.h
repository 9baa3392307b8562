#pragma once

#include <span>
#include <string>
#include <string_view>

/// The texts of the program are those of a Mac: so they stand in the code, are stored and are
/// exported. Before one is shown it becomes the same sentence for the system that this runs on.
namespace tidemark::systemWords {

/// One row of the table of a system. A "{}" in `source` stands for any text, which takes the place
/// of the "{}" of `here`; the first row that fits is used.
struct Entry {
    std::string_view source;
    std::string_view here;
};

/// All texts that read differently on this system. One source file per system.
std::span<const Entry> table();

/// `source` as it is shown on this system; a text that is not in the table stays as it is. Empty
/// for what this system does not have, such as one of its settings: that is not shown at all.
std::string shown(std::string_view source);

} // namespace tidemark::systemWords
