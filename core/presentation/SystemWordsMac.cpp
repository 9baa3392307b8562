#include "core/presentation/SystemWords.h"

namespace tidemark::systemWords {

std::span<const Entry> table() {
    return {};
}

} // namespace tidemark::systemWords
