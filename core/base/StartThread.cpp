#include "core/base/StartThread.h"

#include "core/base/Error.h"

#include <cstring>
#include <string>
#include <system_error>
#include <utility>

namespace tidemark {

std::thread startThread(std::function<void()> work) {
    try {
        return std::thread(std::move(work));
    } catch (const std::system_error& error) {
        throw Error("No further thread could be started: "
                    + std::string(std::strerror(error.code().value())) + ".");
    }
}

} // namespace tidemark
