#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Takes private details out of sentences that others may read: the log of a service, which
/// administrators can read, and a report that a user shows to others.
namespace tidemark::publicText {

/// The names of this user and this machine.
std::vector<std::string> privateNames();

/// `sentence` without private details. A path becomes "[path]", and so does everything from the
/// first path to the end of the last one; of the path of one of the program's own documents, the
/// name stays. A text in quotation marks and each of the words in `names` become "[name]". Where
/// the end of a path is not certain, as with blanks in it, the rest is left out.
std::string of(std::string_view sentence, const std::vector<std::string>& names);

} // namespace tidemark::publicText
