#include "app/model/Operations.h"

namespace tidemark {

std::optional<Operations::Token> Operations::begin(Operation operation) {
    if (!mayBegin(operation))
        return std::nullopt;
    running = running.with(operation);
    owner.noteChange();
    return Token(*this, operation);
}

void Operations::end(Operation operation) {
    running = running.without(operation);
    owner.noteChange();
}

} // namespace tidemark
