#include "core/system/SystemFacts.h"

#include "core/base/Files.h"
#include "core/system/MountTable.h"
#include "core/system/OsRelease.h"
#include "core/system/UserFolders.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace tidemark;

TEST(MountTable, ParsesTheKernelsFormat) {
    const auto table = parseMountTable("22 1 254:0 / / rw,relatime shared:1 - ext4 /dev/root rw\n"
                                       "nonsense\n"
                                       "30 22 0:40 / /mnt/My\\040Disk rw - nfs4 host:/x ro,vers=4\n"
                                       "31 22 8:1 / /mnt/a rw - vfat /dev/sda1 rw\n"
                                       "32 22 8:2 / /mnt/a ro - vfat /dev/sda2 rw\n");
    ASSERT_EQ(table.size(), 4U);
    EXPECT_EQ(table[0], (MountEntry{"254:0", "/", false, "ext4", "/dev/root"}));
    EXPECT_EQ(table[1], (MountEntry{"0:40", "/mnt/My Disk", true, "nfs4", "host:/x"}));

    const struct {
        const char* path;
        const char* device;
        const char* source;
    } cases[] = {
        {"/home", "254:0", "/dev/root"},   {"/mnt/My Disk/f", "0:40", "host:/x"},
        {"/mnt/a/f", "8:2", "/dev/sda2"},  {"/mnt/a/f", "8:1", "/dev/sda1"},
        {"/mnt/ab", "254:0", "/dev/root"}, {"/mnt/a", "8:2", "/dev/sda2"},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(mountOf(table, expected.path, expected.device)->source, expected.source)
            << expected.path;
    EXPECT_TRUE(isNetworkFileSystem("nfs4"));
    EXPECT_FALSE(isNetworkFileSystem("ext4"));
}

TEST(OsRelease, RemovesShellQuoting) {
    const auto values =
        parseOsRelease("# comment\nNAME='A \"B\"'\nVERSION_ID=\"1\\\"2\"\nEMPTY=\n");
    EXPECT_EQ(values.at("NAME"), "A \"B\"");
    EXPECT_EQ(values.at("VERSION_ID"), "1\"2");
    EXPECT_EQ(versionOf(values), "A \"B\" 1\"2");
    EXPECT_EQ(versionOf({{"NAME", "Rolling"}, {"PRETTY_NAME", "Rolling Linux"}}), "Rolling Linux");
    EXPECT_EQ(versionOf({}), std::nullopt);
}

TEST(SystemFacts, DescribesTheVolumeOfThisMachine) {
    const auto mounts = parseMountTable(readFile("/proc/self/mountinfo"));
    if (std::ranges::none_of(mounts, [](const auto& mount) { return mount.mountPoint == "/"; }))
        GTEST_SKIP() << "this machine's mount table has no entry for /";
    struct statvfs status{};
    ASSERT_EQ(::statvfs("/", &status), 0);
    const auto context = SystemFacts::readVolumeContext("/");
    ASSERT_TRUE(context);
    EXPECT_EQ(context->capacity, static_cast<std::int64_t>(status.f_blocks * status.f_frsize));
    EXPECT_EQ(context->local, true);
    EXPECT_FALSE(context->fileSystem->empty());
    EXPECT_GT(SystemFacts::volumeSpace("/").freeBytes.value_or(-1), 0);

    EXPECT_EQ(SystemFacts::readVolumeContext("/no/such/place"), std::nullopt);
    EXPECT_EQ(SystemFacts::volumeSpace("/no/such/place"), SystemFacts::VolumeSpace());
    EXPECT_FALSE(SystemFacts::collectOperatingSystem().version.empty());
}

TEST(SystemFacts, FindsTheHomeDirectory) {
    const std::string recorded = ::getpwuid(::getuid())->pw_dir;
    const std::pair<std::optional<std::string>, std::string> cases[] = {
        {"/elsewhere", "/elsewhere"},
        {"/elsewhere//", "/elsewhere"},
        {"/", "/"},
        {"relative/home", recorded},
        {"", recorded},
        {std::nullopt, recorded},
    };
    for (const auto& [variable, home] : cases)
        EXPECT_EQ(SystemFacts::homeDirectory(variable), home) << variable.value_or("none");
    EXPECT_EQ(SystemFacts::homeDirectory(),
              SystemFacts::homeDirectory(UserFolders::processEnvironment("HOME")));
}
