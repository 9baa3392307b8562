#include "core/capture/ProgramPaths.h"

#include "core/base/Text.h"

namespace tidemark {

namespace {

constexpr const char* folders[] = {"/bin", "/sbin", "/lib", "/lib64", "/usr/sbin"};

} // namespace

ProgramPaths ProgramPaths::of(const MachineFiles& machine) {
    ProgramPaths paths;
    for (const char* folder : folders) {
        const std::string real = machine.canonical(folder).native();
        if (real != folder && isBelow(real, "/usr"))
            paths.links.push_back({folder, real});
    }
    return paths;
}

std::string ProgramPaths::normalised(std::string_view program) const {
    for (const auto& [from, to] : links)
        if (isBelow(program, from))
            return to + std::string(program.substr(from.size()));
    return std::string(program);
}

} // namespace tidemark
