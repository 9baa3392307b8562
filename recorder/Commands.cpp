#include "recorder/Commands.h"

#include <array>

namespace tidemark {

std::span<const Command> commands::ofRecorder() {
#define TIDEMARK_CALL(name) name(),
    static const std::array all{TIDEMARK_RECORDER_COMMANDS(TIDEMARK_CALL)};
#undef TIDEMARK_CALL
    return all;
}

} // namespace tidemark
