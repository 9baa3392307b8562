#include "recorder/FilePath.h"

#include "recorder/CommandOption.h"

namespace tidemark {

FilePath FilePath::given(const std::string& word) {
    if (word.empty())
        throw UsageError("a path can't be empty");
    if (word.starts_with('/'))
        return {{word}};
    std::error_code error;
    const auto directory = std::filesystem::current_path(error);
    if (error)
        throw Error("The working directory was removed: give an absolute path instead of \"" + word
                    + "\".");
    return {{(directory / word).native()}};
}

void FilePath::check() const {
    if (!bytes.bytes.starts_with('/'))
        throw UsageError("a path must be absolute");
    if (bytes.bytes.find('\0') != std::string::npos)
        throw UsageError("a path can't hold a NUL character");
}

} // namespace tidemark
