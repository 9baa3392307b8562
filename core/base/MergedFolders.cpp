#include "core/base/MergedFolders.h"

#include "core/base/Text.h"

namespace tidemark {

namespace {

constexpr const char* candidates[] = {"/bin",   "/sbin",   "/lib",     "/lib32",
                                      "/lib64", "/libx32", "/usr/sbin"};

} // namespace

MergedFolders::MergedFolders(const MachineFiles& machine) {
    for (const char* folder : candidates) {
        const std::string real = machine.canonical(folder).native();
        if (real != folder && isBelow(real, "/usr"))
            links.push_back({folder, real});
    }
}

std::string MergedFolders::canonical(std::string_view path) const {
    for (const auto& [from, to] : links)
        if (isBelow(path, from))
            return to + std::string(path.substr(from.size()));
    return std::string(path);
}

std::vector<std::string> MergedFolders::spellings(std::string_view folder) const {
    std::vector<std::string> all{std::string(folder)};
    for (const auto& [from, to] : links)
        if (isBelow(folder, to))
            all.push_back(from + std::string(folder.substr(to.size())));
    return all;
}

} // namespace tidemark
