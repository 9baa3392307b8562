#pragma once

#include "manual/Program.h"

namespace tidemark::manual {

/// The manual page in the format of man(7), UTF-8. `date` is that of the release, such as
/// "2026-05-31".
std::string page(const Program& program, std::string_view version, std::string_view date);

} // namespace tidemark::manual
