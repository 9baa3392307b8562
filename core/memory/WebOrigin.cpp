#include "core/memory/WebOrigin.h"

#include "core/base/Url.h"

#include <algorithm>

namespace tidemark {

std::optional<std::string> webOrigin(std::string_view url) {
    const auto scheme = urlScheme(url);
    if (scheme != "https" && scheme != "http")
        return std::nullopt;
    url = url.substr(0, url.find_first_of("?#"));
    const std::size_t afterScheme = scheme->size() + 1;
    std::string_view rest = url.substr(afterScheme);
    std::string origin(url.substr(0, afterScheme));
    if (rest.starts_with("//")) {
        origin += "//";
        rest.remove_prefix(2);
        // The last "@": an unescaped one may occur in a password.
        if (const auto at = rest.substr(0, rest.find('/')).rfind('@'); at != rest.npos)
            rest.remove_prefix(at + 1);
    }
    return origin + std::string(rest);
}

} // namespace tidemark
