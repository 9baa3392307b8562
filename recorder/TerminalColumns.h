#pragma once

#include <cstdint>

namespace tidemark {

/// The width of the terminal that standard output goes to, in columns; 80 where it is none.
std::int64_t terminalColumns();

} // namespace tidemark
