#include "core/base/MachineFiles.h"

#include "core/base/FileError.h"
#include "core/base/MergedFolders.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>

using namespace tidemark;
using test::TemporaryFolder;
namespace fs = std::filesystem;

TEST(MachineFiles, ResolvesLinksAsTheMachineWouldAndNeverLeavesIt) {
    const TemporaryFolder folder;
    const auto root = folder.makeFolder("machine");
    folder.write("secret", "outside");
    folder.write("machine/usr/lib/a", "inside");
    folder.write("machine/secret", "inside");
    fs::create_symlink("usr/lib", root / "lib");
    fs::create_symlink("/usr/lib", root / "absolute");
    fs::create_symlink("../../..", root / "up");
    fs::create_symlink("circle", root / "circle");
    fs::create_symlink("/nowhere/x", root / "dangling");
    const auto machine = MachineFiles::below(root);
    const std::pair<const char*, const char*> cases[] = {
        {"/lib/a", "/usr/lib/a"},
        {"/absolute/a", "/usr/lib/a"},
        {"/lib/./../lib/a/", "/usr/lib/a"},
        {"/up/secret", "/secret"},
        {"/../../secret", "/secret"},
        {"/circle/x", "/circle/x"},
        {"/dangling", "/nowhere/x"},
        {"/lib/missing/deep", "/usr/lib/missing/deep"},
        {"/", "/"},
    };
    for (const auto& [path, canonical] : cases)
        EXPECT_EQ(machine.canonical(path), canonical) << path;
    for (const char* path : {"/lib/a", "/absolute/a", "/up/secret", "/../secret"})
        EXPECT_EQ(machine.read(path, 100), "inside") << path;
    EXPECT_THROW(machine.read("/circle/x", 100), FileError);
    EXPECT_EQ(machine.outside("/usr/lib/a"), root / "usr/lib/a");
    EXPECT_EQ(MachineFiles().outside("/usr/lib/a"), "/usr/lib/a");
    EXPECT_THROW(MachineFiles::below(folder / "secret"), FileError);

    // Somebody replaces a folder by a link after the path was resolved.
    const auto resolved = machine.canonical("/lib/a");
    fs::rename(root / "usr/lib", root / "usr/old");
    fs::create_symlink(folder.path(), root / "usr/lib");
    EXPECT_FALSE(machine.open(resolved, O_RDONLY));
    EXPECT_FALSE(machine.open("/usr/lib/secret", O_RDONLY));
    EXPECT_FALSE(machine.open("/usr/../../secret", O_RDONLY));
    EXPECT_FALSE(machine.open("/..", O_RDONLY));
}

TEST(MergedFolders, AreThoseThatLeadIntoUsr) {
    const TemporaryFolder root;
    root.makeFolder("usr/bin");
    root.makeFolder("lib");
    root.makeFolder("opt/sbin");
    fs::create_symlink("usr/bin", root / "bin");
    fs::create_symlink("/opt/sbin", root / "sbin");
    const MergedFolders merged(MachineFiles::below(root.path()));
    for (const auto& [path, canonical] : {std::pair("/bin/a", "/usr/bin/a"),
                                          {"/lib/a", "/lib/a"},
                                          {"/sbin/a", "/sbin/a"},
                                          {"/binary", "/binary"}})
        EXPECT_EQ(merged.canonical(path), canonical);
}
