#include "core/base/CanonicalPath.h"

#include <cstdlib>
#include <memory>

namespace tidemark {

namespace {

/// Empty when the path does not exist or can't be resolved.
std::filesystem::path resolved(const std::filesystem::path& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real ? std::filesystem::path(real.get()) : std::filesystem::path();
}

} // namespace

std::filesystem::path canonicalPath(const std::filesystem::path& path) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    std::filesystem::path rest;
    auto existing = error ? path : absolute;
    auto real = resolved(existing);
    while (real.empty() && existing.has_relative_path()) {
        rest = rest.empty() ? existing.filename() : existing.filename() / rest;
        existing = existing.parent_path();
        real = resolved(existing);
    }
    auto canonical = ((real.empty() ? existing : real) / rest).lexically_normal();
    return canonical.has_filename() ? canonical : canonical.parent_path();
}

} // namespace tidemark
