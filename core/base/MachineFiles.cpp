#include "core/base/MachineFiles.h"

#include "core/base/CanonicalPath.h"
#include "core/base/Files.h"
#include "core/base/OpenFlags.h"

#include <array>
#include <cerrno>
#include <deque>
#include <utility>

#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

namespace tidemark {

namespace {

namespace fs = std::filesystem;

/// As many links as a system follows in one path.
constexpr int mostLinks = 40;

std::deque<std::string> componentsOf(const fs::path& path) {
    std::deque<std::string> components;
    for (const auto& component : path.relative_path())
        if (!component.empty() && component != ".")
            components.push_back(component.native());
    return components;
}

/// Opens the folder `name` in an open folder; fails if `name` is a link.
std::expected<FileDescriptor, int> openIn(int folder, const char* name) {
    FileDescriptor opened(
        ::openat(folder, name, openFlags::toSearchFolder | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!opened)
        return std::unexpected(errno);
    return opened;
}

/// The folder at `canonical`, opened from `top` one folder after the other.
std::expected<FileDescriptor, int> openFolder(int top, const fs::path& canonical) {
    auto folder = openIn(top, ".");
    for (const auto& name : componentsOf(canonical)) {
        if (!folder)
            break;
        if (name == "..")
            return std::unexpected(EINVAL);
        folder = openIn(folder->get(), name.c_str());
    }
    return folder;
}

/// The text of the link `name` in an open folder; empty if it is not a link.
std::string linkText(int folder, const std::string& name) {
    std::array<char, PATH_MAX> text;
    const ssize_t length = ::readlinkat(folder, name.c_str(), text.data(), text.size());
    return length > 0 ? std::string(text.data(), static_cast<std::size_t>(length)) : std::string();
}

fs::path resolvedBelow(int top, const fs::path& path) {
    fs::path resolved = "/";
    // The folder at `resolved`, or why it could not be opened.
    auto folder = openFolder(top, resolved);
    auto rest = componentsOf(path);
    int links = 0;
    while (!rest.empty()) {
        const std::string name = std::move(rest.front());
        rest.pop_front();
        if (name == "..") {
            resolved = resolved.parent_path();
            folder = openFolder(top, resolved);
            continue;
        }
        const std::string text = folder ? linkText(folder->get(), name) : std::string();
        // After too many links, perhaps in a circle, a link stays in the result, which `open`
        // then refuses.
        if (text.empty() || ++links > mostLinks) {
            resolved /= name;
            if (folder && !rest.empty())
                folder = openIn(folder->get(), name.c_str());
            continue;
        }
        if (text.starts_with('/')) {
            resolved = "/";
            folder = openFolder(top, resolved);
        }
        auto target = componentsOf(text);
        rest.insert(rest.begin(), target.begin(), target.end());
    }
    return resolved;
}

} // namespace

MachineFiles MachineFiles::below(const fs::path& root) {
    MachineFiles files;
    files.root = canonicalPath(root);
    FileDescriptor opened(
        ::open(files.root.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!opened)
        throw FileError::ofSystem(files.root, "could not be opened", errno);
    files.top = std::make_shared<const FileDescriptor>(std::move(opened));
    return files;
}

fs::path MachineFiles::canonical(const fs::path& path) const {
    return top ? resolvedBelow(top->get(), path) : canonicalPath(path);
}

std::expected<FileDescriptor, int> MachineFiles::open(const fs::path& canonical, int flags) const {
    flags |= O_NOFOLLOW | O_CLOEXEC;
    FileDescriptor opened;
    if (!top) {
        opened = FileDescriptor(::open(canonical.c_str(), flags));
    } else {
        const auto folder = openFolder(top->get(), canonical.parent_path());
        if (!folder)
            return std::unexpected(folder.error());
        const auto name = canonical.has_filename() ? canonical.filename() : fs::path(".");
        if (name == "..")
            return std::unexpected(EINVAL);
        opened = FileDescriptor(::openat(folder->get(), name.c_str(), flags));
    }
    if (!opened)
        return std::unexpected(errno);
    return opened;
}

std::string MachineFiles::read(const fs::path& path, std::size_t limit) const {
    const auto file = open(canonical(path), O_RDONLY | O_NONBLOCK);
    if (!file)
        throw FileError::ofSystem(path, "could not be read", file.error());
    return readFile(*file, path, limit);
}

fs::path MachineFiles::outside(const fs::path& canonical) const {
    return top ? root / canonical.relative_path() : canonical;
}

} // namespace tidemark
