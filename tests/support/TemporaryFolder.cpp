#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>

#include <sys/stat.h>

namespace tidemark::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "tidemark-test-XXXXXX").native();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no temporary folder: " + name);
    folder = fs::canonical(name);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    for (fs::recursive_directory_iterator entries(folder, error), end; entries != end;
         entries.increment(error)) {
        if (entries->is_directory(error) && !entries->is_symlink(error))
            fs::permissions(entries->path(), fs::perms::owner_all, error);
    }
    fs::remove_all(folder, error);
}

fs::path TemporaryFolder::write(std::string_view name, std::string_view bytes) const {
    const fs::path file = folder / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
}

fs::path TemporaryFolder::makeFolder(std::string_view name) const {
    fs::create_directories(folder / name);
    return folder / name;
}

std::string contents(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

unsigned modeOf(const fs::path& file) {
    struct stat status{};
    return ::lstat(file.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

std::string namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().native());
    std::string list;
    for (const auto& name : names)
        list += (list.empty() ? "" : " ") + name;
    return list;
}

} // namespace tidemark::test
