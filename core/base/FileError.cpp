#include "core/base/FileError.h"

#include "core/base/Text.h"

#include <cstring>

namespace tidemark {

FileError::FileError(std::filesystem::path path, std::string reason, int code)
    : Error(asSentence(textFromBytes(path.native()) + " " + reason)), where(std::move(path)),
      why(std::move(reason)), number(code) {}

FileError FileError::ofSystem(const std::filesystem::path& file, std::string_view failure,
                              int code) {
    return {file, std::string(failure) + ": " + std::strerror(code), code};
}

} // namespace tidemark
