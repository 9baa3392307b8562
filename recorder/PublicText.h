#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Takes private details out of sentences that others may read: the log of a service, which
/// administrators can read, and a report that a user shows to others.
namespace tidemark::publicText {

/// The names of this user and this machine.
std::vector<std::string> privateNames();

/// `sentence` without private details. "[path]" stands for a path, or for all from the first path
/// to the end of the last; of the path of one of the program's own documents, the name stays.
/// "[name]" stands for a text in quotation marks and for each of the words in `names`. Where the
/// end of a path is not certain, as with blanks in it, the rest is left out.
std::string of(std::string_view sentence, const std::vector<std::string>& names);

} // namespace tidemark::publicText
