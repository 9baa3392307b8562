#pragma once

#include "core/capture/InventoryRoots.h"

#include <cstddef>
#include <string>
#include <vector>

/// Which of several desktop entries with one identifier is the application.
///
/// A desktop shows the one in the most preferred folder. Here it is the one in the least preferred,
/// the vendor's: a menu editor writes a whole copy into the user's folder, and if that were
/// recorded, the vendor's would be reported as removed and the copy as installed.
namespace tidemark::ApplicationPrecedence {

struct Candidate {
    std::string identifier;
    RootFamily family = RootFamily::any;
    /// The place of its root, the most preferred first.
    std::size_t root = 0;
};

/// For each candidate, true when another one is the application. In other families every candidate
/// is an application, even when several have the same identifier.
std::vector<bool> overridden(const std::vector<Candidate>& candidates);

} // namespace tidemark::ApplicationPrecedence
