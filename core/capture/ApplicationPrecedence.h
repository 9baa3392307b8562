#pragma once

#include "core/capture/InventoryRoots.h"

#include <cstddef>
#include <string>
#include <vector>

/// Selects which of several desktop entries with the same identifier is recorded as the
/// application.
///
/// A desktop shows the entry in the most preferred folder. This function selects the entry in the
/// least preferred folder, which is the vendor's: a menu editor writes a whole copy of it into the
/// user's folder, and if that copy were recorded, the vendor's entry would be reported as removed
/// and the copy as installed.
namespace tidemark::ApplicationPrecedence {

struct Candidate {
    std::string identifier;
    RootFamily family = RootFamily::any;
    /// The position of its root in the list of roots, in which the most preferred is the first.
    std::size_t root = 0;
};

/// For each candidate, true when another desktop entry is recorded in its place. False for a
/// candidate of any other family, even when several have the same identifier.
std::vector<bool> overridden(const std::vector<Candidate>& candidates);

} // namespace tidemark::ApplicationPrecedence
