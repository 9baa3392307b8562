#include "core/system/TrashFolder.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

UserFolders::Environment withDataIn(const std::string& data) {
    return [data](const char* name) -> std::optional<std::string> {
        return std::string_view(name) == "XDG_DATA_HOME" ? std::optional(data) : std::nullopt;
    };
}

} // namespace

TEST(TrashFolder, IsRecognisedByItsPath) {
    const std::pair<const char*, bool> cases[] = {
        {"/home/.Trash", true},
        {"/home/.Trash/", true},
        {"/home/.trash", false},
        {"/home/.Trash/sub", false},
        {"/home/Trash", false},
        {"", false},
#ifdef __APPLE__
        {"/Volumes/Disk/.Trashes/501", true},
        {"/Volumes/Disk/.Trashes", false},
        {"/Volumes/Disk/.Trashes/folder", false},
#else
        {"/home/.local/share/Trash/files", true},
        {"/home/.local/share/Trash", false},
        {"/home/.local/share/Trash/info", false},
        {"/home/.local/share/Trash/files/a", false},
        {"/data/Trash/files/", true},
        {"/home/Music/Trash/files", false},
        {"/media/x/.Trash-1000/files", true},
        {"/media/x/.Trash/1000/files", true},
        {"/media/x/.Trash-1000", false},
        {"/media/x/.Trash-1000/files/a", false},
        {"/media/x/.Trash-/files", false},
        {"/media/x/.Trash-mine/files", false},
        {"/media/x/1000/files", false},
#endif
    };
    for (const auto& [path, isTrash] : cases)
        EXPECT_EQ(TrashFolder::is(path, withDataIn("/data")), isTrash) << path;
}

#ifndef __APPLE__
TEST(TrashFolder, IsRecognisedThroughALinkedDataFolder) {
    const test::TemporaryFolder folder;
    folder.makeFolder("disk/Trash/files");
    std::filesystem::create_symlink(folder / "disk", folder / "data");
    const auto environment = withDataIn((folder / "data").native());
    for (const char* name : {"data/Trash/files", "disk/Trash/files"})
        EXPECT_TRUE(TrashFolder::is((folder / name).native(), environment)) << name;
}
#endif
