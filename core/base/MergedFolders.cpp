#include "core/packages/MergedFolders.h"

#include "core/base/Text.h"

namespace tidemark {

namespace {

constexpr std::string_view merged = "/usr";
constexpr std::string_view candidates[] = {"/bin", "/sbin", "/lib", "/lib32", "/lib64", "/libx32"};

} // namespace

MergedFolders::MergedFolders(const MachineFiles& machine) {
    for (const auto folder : candidates)
        if (machine.canonical(folder).native() == std::string(merged) + std::string(folder))
            links.emplace_back(folder);
}

std::string MergedFolders::canonical(std::string_view path) const {
    for (const auto& link : links)
        if (isBelow(path, link))
            return std::string(merged) + std::string(path);
    return std::string(path);
}

std::vector<std::string> MergedFolders::spellings(std::string_view folder) const {
    std::vector<std::string> all{std::string(folder)};
    for (const auto& link : links)
        if (isBelow(folder, std::string(merged) + link))
            all.emplace_back(folder.substr(merged.size()));
    return all;
}

} // namespace tidemark
