#include "core/base/FileDescriptor.h"
#include "core/base/JsonEncoder.h"
#include "core/base/KeyFile.h"
#include "core/base/Text.h"
#include "core/capture/RootReading.h"
#include "core/system/SystemFacts.h"
#include "tests/support/MadeUpMachine.h"
#include "tests/support/OrdinaryUser.h"

#include <algorithm>
#include <cstdlib>

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tidemark;
using test::MadeUpMachine;
namespace fs = std::filesystem;

namespace {

const std::string vendor = "/usr/lib/systemd/system/";
const std::string admin = "/etc/systemd/system/";
const std::string install = "[Install]\nWantedBy=multi-user.target\n";
const std::string sshd = "[Unit]\nDescription=Shell\n\n[Service]\nExecStart=/usr/sbin/sshd -D\n"
                         "Restart=on-failure\n\n"
                         + install;

std::string home(const std::string& path) {
    return SystemFacts::homeDirectory().native() + "/" + path;
}

std::string entry(const std::string& more) {
    return "[Desktop Entry]\nType=Application\nName=Files\nExec=/usr/bin/files --scan\n" + more;
}

/// A machine with at least one background item of each kind.
struct BackgroundMachine : MadeUpMachine {
    BackgroundMachine() {
        write(vendor + "ssh.service", sshd);
        link(admin + "multi-user.target.wants/ssh.service", "/lib/systemd/system/ssh.service");
        link(admin + "sshd.service", "/lib/systemd/system/ssh.service");
        write(vendor + "backup.service", "[Service]\nType=oneshot\nExecStart=/usr/bin/backup\n");
        write(vendor + "backup.timer", "[Timer]\nOnUnitActiveSec=1h 30min\n\n" + install);
        write(vendor + "getty@.service", "[Service]\nExecStart=/sbin/agetty %I\n\n" + install);
        link(admin + "getty.target.wants/getty@tty1.service", vendor + "getty@.service");
        write(vendor + "plumbing.service", "[Service]\nExecStart=/usr/bin/plumbing\n");
        link(vendor + "sysinit.target.wants/plumbing.service", "../plumbing.service");
        write(vendor + "multi-user.target", "[Unit]\n");
        write("/usr/lib/systemd/user/sync.socket", "[Socket]\nListenStream=/s\n\n" + install);
        write("/usr/lib/systemd/user/sync.service", "[Service]\nExecStart=sync\n");
        write("/etc/xdg/autostart/files.desktop", entry(""));
        write("/etc/cron.d/stat", "PATH=/bin\n# five minutes\n*/5 * * * * root /bin/stat -q\n");
        write("/etc/cron.daily/rotate", "#!/bin/sh\n");
        fs::permissions(at("/etc/cron.daily/rotate"), fs::perms(0755));
    }
};

} // namespace

TEST(BackgroundChanges, AreReportedIfTheyChangeWhatAProgramDoes) {
    const std::string own = home(".config/autostart/files.desktop");
    const std::string changed = "Background Item Changed ";
    const std::string added = "New Background Item ";
    const std::string removed = "Background Item Removed ";
    const std::string disabled = "; Disabled in definition: No → Yes";
    const std::string instance = admin + "getty.target.wants/getty@tty1.service";
    struct Case {
        const char* what;
        std::function<void(const BackgroundMachine&)> change;
        std::string events;
    };
    const auto write = [](const std::string& path, const std::string& bytes) {
        return [=](const BackgroundMachine& machine) { machine.write(path, bytes); };
    };
    const auto remove = [](const std::string& path) {
        return [=](const BackgroundMachine& machine) { machine.remove(path); };
    };
    const auto link = [](const std::string& path, const std::string& target) {
        return [=](const BackgroundMachine& machine) { machine.link(path, target); };
    };
    const Case cases[] = {
        {"nothing", [](const BackgroundMachine&) {}, ""},
        {"installing", write(vendor + "new.service", sshd), added + vendor + "new.service\n"},
        {"a link to the vendor's unit of the same name",
         link(admin + "plumbing.service", vendor + "plumbing.service"), ""},
        {"a table that is not read", write("/etc/cron.d/stat.dpkg-old", "* * * * * root /x\n"), ""},
        {"installing a unit whose name is a dash", write(vendor + "-.service", sshd),
         added + vendor + "-.service\n"},
        {"installing plumbing", write(vendor + "new.service", "[Service]\nExecStart=/x\n"), ""},
        {"a file that a package manager keeps", write(vendor + "ssh.service.dpkg-old", sshd), ""},
        {"upgrading to other arguments",
         write(vendor + "ssh.service",
               "[Service]\nExecStart=/usr/sbin/sshd\nRestart=on-failure\n" + install),
         changed + vendor + "ssh.service; Launch arguments changed\n"},
        {"upgrading without meaning",
         write(
             vendor + "ssh.service",
             install
                 + "[Service]\n# new\nRestart=on-failure\nProtectSystem=full\nExecStart=/sbin/sshd "
                   "\\\n  # why\n   -D\n[Unit]\nAfter=network.target\n"),
         ""},
        {"disabling",
         [](const BackgroundMachine& machine) {
             machine.remove(admin + "multi-user.target.wants/ssh.service");
             machine.remove(admin + "sshd.service");
         },
         changed + vendor + "ssh.service; Starts when loaded: Yes → No\n"},
        {"being left with a further name only",
         remove(admin + "multi-user.target.wants/ssh.service"), ""},
        {"enabling again for another target",
         [](const BackgroundMachine& machine) {
             machine.remove(admin + "multi-user.target.wants/ssh.service");
             machine.link(admin + "x.target.requires/ssh.service", "/usr/lib/systemd/system/y");
         },
         ""},
        {"masking", link(admin + "ssh.service", "/dev/null"),
         changed + vendor + "ssh.service" + disabled + "\n"},
        {"masking by an empty file", write(admin + "ssh.service", ""),
         changed + vendor + "ssh.service" + disabled + "\n"},
        {"masking a template", link(admin + "getty@.service", "../../../dev/null"),
         changed + instance + disabled + "\n"},
        {"a mask without effect", link(admin + "gone.service", "/dev/null"), ""},
        {"overriding by a drop-in",
         write(admin + "ssh.service.d/a.conf", "[Service]\nExecStart=\nExecStart=/x -y\n"),
         changed + vendor + "ssh.service; Executable changed; Launch arguments changed\n"},
        {"a drop-in with a secret",
         write(admin + "ssh.service.d/a.conf", "[Service]\nEnvironment=A=secret\nRestart=always\n"),
         changed + vendor
             + "ssh.service; Environment settings changed; Keep running: Conditional → Yes\n"},
        {"a drop-in of a template",
         write(admin + "getty@.service.d/a.conf", "[Service]\nUser=me\n"),
         changed + instance + "; UserName changed\n"},
        {"a drop-in of all services", write(admin + "service.d/a.conf", "[Service]\nUser=me\n"),
         changed + instance + "; UserName changed\n" + changed + vendor
             + "ssh.service; UserName changed\n"},
        {"a drop-in that is masked at once",
         [](const BackgroundMachine& machine) {
             machine.write(vendor + "ssh.service.d/a.conf", "[Service]\nRestart=no\n");
             machine.link(admin + "ssh.service.d/a.conf", "/dev/null");
         },
         ""},
        {"a drop-in that is a link", link(admin + "ssh.service.d/a.conf", "/home/x/a.conf"),
         changed + vendor + "ssh.service; Launch arguments changed\n"},
        {"a drop-in of what a timer starts",
         write(admin + "backup.service.d/a.conf", "[Service]\nExecStartPre=/x\n"),
         changed + vendor + "backup.timer; Launch arguments changed\n"},
        {"another interval",
         write(vendor + "backup.timer", "[Timer]\nOnUnitActiveSec=90min 1s\n\n" + install),
         changed + vendor + "backup.timer; Run interval (seconds): 5400 → 5401\n"},
        {"another log",
         write(admin + "ssh.service.d/a.conf", "[Service]\nStandardOutput=journal\n"), ""},
        {"a drop-in that is masked by an empty file",
         [](const BackgroundMachine& machine) {
             machine.write(vendor + "ssh.service.d/a.conf", "[Service]\nRestart=no\n");
             machine.write(admin + "ssh.service.d/a.conf", "");
             machine.write(admin + "ssh.service.d/b.conf", "[Service]\nUser=me\n");
         },
         changed + vendor + "ssh.service; UserName changed\n"},
        {"a drop-in that a package manager keeps",
         write(admin + "ssh.service.d/a.conf.dpkg-old", "[Service]\nUser=me\n"), ""},
        {"an interval in no known unit",
         write(vendor + "backup.timer", "[Timer]\nOnUnitActiveSec=5 moons\n\n" + install),
         changed + vendor
             + "backup.timer; Calendar schedule changed; Run interval (seconds) changed\n"},
        {"overriding by a copy with a drop-in of its own",
         [](const BackgroundMachine& machine) {
             machine.write(admin + "ssh.service", sshd + "# mine\n");
             machine.write(admin + "ssh.service.d/a.conf", "[Service]\nUser=me\n");
         },
         added + admin + "ssh.service\n"},
        {"overriding an instance", write(admin + "getty@tty1.service", sshd),
         removed + instance + "\n" + added + admin + "getty@tty1.service\n"},
        {"a further name by the distribution", link(vendor + "pipes.service", "plumbing.service"),
         ""},
        {"choosing by a further name of a further name",
         [](const BackgroundMachine& machine) {
             machine.link(vendor + "pipes.service", "plumbing.service");
             machine.link(admin + "water.service", "/lib/systemd/system/pipes.service");
         },
         added + vendor + "plumbing.service\n"},
        {"a file in place of the link that enables",
         write(admin + "x.target.wants/plumbing.service", ""), ""},
        {"enabling plumbing", link(admin + "x.target.wants/plumbing.service", "/x"),
         added + vendor + "plumbing.service\n"},
        {"disabling an instance", remove(instance), removed + instance + "\n"},
        {"removing",
         [](const BackgroundMachine& machine) {
             machine.remove(vendor + "ssh.service");
             machine.remove(admin + "multi-user.target.wants");
         },
         removed + vendor + "ssh.service\n"},
        {"another socket",
         write("/usr/lib/systemd/user/sync.socket", "[Socket]\nListenStream=/t\n\n" + install),
         changed + "/usr/lib/systemd/user/sync.socket; Sockets changed\n"},
        {"hiding an entry", write(own, "[Desktop Entry]\nHidden=true\n"),
         changed + "/etc/xdg/autostart/files.desktop" + disabled
             + "; Starts when loaded: Yes → No\n"},
        {"hiding an entry by a link", link(own, "/dev/null"),
         changed + "/etc/xdg/autostart/files.desktop" + disabled
             + "; Starts when loaded: Yes → No\n"},
        {"an empty folder to start in", write("/etc/xdg/autostart/files.desktop", entry("Path=\n")),
         ""},
        {"replacing an entry", write(own, entry("")), added + own + "\n"},
        {"switching an entry off in place",
         write("/etc/xdg/autostart/files.desktop", entry("X-GNOME-Autostart-enabled=false\n")),
         changed + "/etc/xdg/autostart/files.desktop" + disabled
             + "; Starts when loaded: Yes → No\n"},
        {"another time", write("/etc/cron.d/stat", "PATH=/bin\n*/6 * * * * root /bin/stat -q\n"),
         changed + "/etc/cron.d/stat; Calendar schedule changed\n"},
        {"running when started",
         write("/etc/cron.d/stat", "PATH=/bin\n*/5 * * * * root /bin/stat -q\n@reboot root /x\n"),
         changed
             + "/etc/cron.d/stat; Launch arguments changed; Starts when loaded: No → Yes; "
               "Calendar schedule changed; UserName changed\n"},
        {"a table whose jobs are comments", write("/etc/cron.d/stat", "# 1 2 3 4 5 root x\n"),
         removed + "/etc/cron.d/stat\n"},
        {"a script that may not be executed",
         [](const BackgroundMachine& machine) {
             fs::permissions(machine.at("/etc/cron.daily/rotate"), fs::perms(0644));
         },
         changed + "/etc/cron.daily/rotate" + disabled + "\n"},
    };
    for (const auto& each : cases) {
        const BackgroundMachine machine;
        const Snapshot before = machine.observed();
        EXPECT_EQ(before.coverage.issues, std::vector<std::string>()) << each.what;
        EXPECT_EQ(before.coverage.notes, std::vector<std::string>()) << each.what;
        EXPECT_EQ(before.backgroundItems->size(), 7U) << each.what;
        each.change(machine);
        const Snapshot after = machine.observed();
        EXPECT_EQ(test::eventLines(before, after), each.events) << each.what;
        EXPECT_EQ(json::encoded(after).find("secret"), std::string::npos) << each.what;
    }
}

TEST(BackgroundChanges, AreNotReportedForAReleaseThatOnlyRewritesItsUnits) {
    // The kinds of changes that the units of one project had between two releases.
    const auto unit = [](int number, bool isNewer) {
        const std::string program = (number % 3 == 0 && !isNewer ? "/lib/" : "/usr/lib/")
                                    + std::string("daemon-") + std::to_string(number);
        const std::string start = isNewer ? "ExecStart=!!" + program + " --serve\n"
                                          : "ExecStart=!!" + program + " \\\n    --serve\n";
        const std::string unitPart = std::string("[Unit]\nDescription=Daemon\n")
                                     + (isNewer ? "Documentation=man:daemon(8)\nAfter=a.target\n"
                                                : "ConditionVirtualization=!container\n");
        const std::string hardening = isNewer ? "ProtectProc=invisible\nMemoryMax=1G\n" : "";
        const std::string arguments = number == 7 && isNewer ? "ExecReload=/bin/kill\n" : "";
        const std::string body = isNewer
                                     ? "[Service]\nType=notify-reload\n" + hardening + start
                                           + arguments + "Restart=always\nUser=d\n"
                                     : "[Service]\nType=notify\nUser=d\nRestart=always\n" + start;
        return unitPart + "\n" + body + "\n" + install;
    };
    const MadeUpMachine machine;
    const auto installRelease = [&](bool isNewer) {
        for (int number = 0; number < 60; ++number)
            machine.write(vendor + "daemon-" + std::to_string(number) + ".service",
                          unit(number, isNewer));
        for (int number = 0; number < (isNewer ? 90 : 80); ++number)
            machine.write(vendor + "helper-" + std::to_string(number) + ".service",
                          "[Service]\nExecStart=/usr/bin/helper "
                              + std::string(isNewer ? "--new\n" : "--old\n"));
        return machine.observed();
    };
    EXPECT_EQ(test::eventLines(installRelease(false), installRelease(true)),
              "Background Item Changed " + vendor + "daemon-7.service; Launch arguments changed\n");
}

TEST(BackgroundChanges, AreNotReportedForAnotherSessionOrOrderOnDisk) {
    const BackgroundMachine machine;
    const Snapshot before = machine.observed();
    const MadeUpMachine copy;
    std::vector<fs::path> names;
    for (const auto& file : fs::recursive_directory_iterator(machine.root()))
        if (!file.is_directory() || file.is_symlink())
            names.push_back(file.path().lexically_relative(machine.root()));
    std::ranges::sort(names, std::ranges::greater());
    for (const auto& name : names) {
        fs::create_directories((copy.root() / name).parent_path());
        if (!fs::exists(fs::symlink_status(copy.root() / name)))
            fs::copy(machine.root() / name, copy.root() / name, fs::copy_options::copy_symlinks);
    }
    const std::pair<const char*, const char*> session[] = {{"LANG", "de_DE.UTF-8"},
                                                           {"XDG_CURRENT_DESKTOP", "KDE"},
                                                           {"PATH", "/nowhere"},
                                                           {"XDG_CONFIG_HOME", "/else"},
                                                           {"XDG_DATA_DIRS", "/other/share"}};
    for (const auto& [name, value] : session)
        ::setenv(name, value, 1);
    const Snapshot after = copy.observed();
    for (const auto& [name, value] : session)
        ::unsetenv(name);
    EXPECT_EQ(test::eventLines(before, after), "");
    EXPECT_EQ(before.coverage.backgroundRoots, after.coverage.backgroundRoots);
    EXPECT_EQ(before.backgroundItems->size(), after.backgroundItems->size());
}

TEST(BackgroundChanges, AreNotReportedIfUnitsCannotBeReadCompletely) {
    const std::string unreadableFile =
        "Background items: 1 definitions could not be read or did not contain valid metadata. "
        "They are excluded from comparisons.";
    const auto folderIssue = [](const std::string& path) {
        return "Background items: cannot completely read " + path
               + ". Changes in this location and in the folders that it can override are paused.";
    };
    const std::pair<std::string, std::string> cases[] = {
        {admin + "multi-user.target.wants", folderIssue(admin + "multi-user.target.wants")},
        {admin + "ssh.service.d", folderIssue(admin + "ssh.service.d")},
        {"/etc/systemd/system", folderIssue("/etc/systemd/system")},
        {"/etc/xdg/autostart", folderIssue("/etc/xdg/autostart")},
        {admin + "ssh.service.d/a.conf", unreadableFile},
        {vendor + "ssh.service", unreadableFile},
        // The timer that starts this service is excluded as well.
        {vendor + "backup.service", "Background items: 2" + unreadableFile.substr(19)},
    };
    for (const auto& [path, issue] : cases) {
        const BackgroundMachine machine;
        machine.write(admin + "ssh.service.d/a.conf", "[Service]\nUser=me\n");
        fs::permissions(machine.root(), fs::perms(0755));
        const Snapshot before = machine.observed();
        // A folder is tried a second time with a mode by which it can be listed but not searched.
        for (const unsigned mode : {0U, fs::is_directory(machine.at(path)) ? 0444U : 0U}) {
            fs::permissions(machine.at(path), fs::perms(mode));
            const test::OrdinaryUser user(machine.root());
            const Snapshot after = machine.observed();
            EXPECT_EQ(after.coverage.issues, std::vector<std::string>{issue}) << path << mode;
            EXPECT_EQ(test::eventLines(before, after), "") << path;
            EXPECT_EQ(test::eventLines(after, before), "") << path;
        }
    }
    // Whether a damaged file hides the one that it overrides is not known.
    const BackgroundMachine machine;
    const std::string own = home(".config/autostart/files.desktop");
    machine.write(own, "[Desktop Entry]\nHidden=true\n");
    const Snapshot before = machine.observed();
    machine.write(own, "[Other]\n");
    EXPECT_EQ(test::eventLines(before, machine.observed()), "");
}

TEST(BackgroundChanges, NeedAReadableFileAndStoreNoArguments) {
    const std::string long10 = "[Service]\nExecStart=/x " + std::string(10 << 20, 'a') + "\n";
    const auto unit = [](const std::string& exec) { return "[Service]\nExecStart=" + exec + "\n"; };
    const std::string autostart = "/etc/xdg/autostart/bad.desktop";
    const std::string table = "/etc/cron.d/bad";
    struct Case {
        std::string path;
        std::string bytes;
        /// The program of the item, absent when it has none; "unreadable" when there is no item.
        std::optional<std::string> program;
    };
    const std::string unreadable = "unreadable";
    const Case cases[] = {
        {admin + "bad.service", std::string("[Service]\0\n", 11), unreadable},
        {admin + "bad.service", long10, unreadable},
        {admin + "bad.service", "[Service\nExecStart=/x\n", unreadable},
        {admin + "bad.service", "ExecStart=/x\n", std::nullopt},
        {admin + "bad.service", "[Service]\nExecStop=/x secret\n", std::nullopt},
        {admin + "bad.service", unit("/a b\nExecStart=/c d"), "/a"},
        {admin + "bad.service", unit("-@!!\"/opt/a b/c\" secret"), "/opt/a b/c"},
        {admin + "bad.service", unit("/opt/a\\ b secret"), "/opt/a b"},
        {admin + "bad.service", unit("'/unclosed secret"), "/unclosed secret"},
        {admin + "bad.service", unit("/\xFF secret"), textFromBytes("/\xFF")},
        {admin + "bad.service", unit("\\"), std::nullopt},
        {admin + "bad.service", unit("-@"), std::nullopt},
        {admin + "bad.timer", "[Timer]\nUnit=bad.timer\nOnCalendar=daily\n", std::nullopt},
        {autostart, "[Desktop Entry]\nExec=\"/opt/a \\\\\"b\" %U secret\n", "/opt/a \"b"},
        {autostart, "[Other]\nExec=/x\n", unreadable},
        {admin + "\xFF.service", unit("/x"), "/x"},
        {"/etc/xdg/autostart/\xFF.desktop", "[Desktop Entry]\nExec=/x\n", "/x"},
        {autostart, "[Desktop Entry]\nHidden=true\n", std::nullopt},
        {table, "* * * * * root /x secret%secret\n", "/x"},
        {table, "@reboot root /y", "/y"},
        {table, "* * * * * root /\xFF secret\n", textFromBytes("/\xFF")},
        {table, "* * * * root /x\n", unreadable},
        {table, "* * * * $ root /x\n", unreadable},
        {table, "root /x\n", unreadable},
        {table, "* * * * * root\n", unreadable},
        {table, "@never root /x\n", unreadable},
        {table, std::string("* * * * * root /x\0y\n", 20), unreadable},
    };
    for (const auto& each : cases) {
        const MadeUpMachine machine;
        machine.write(each.path, each.bytes);
        const Snapshot found = machine.observed();
        const std::string shown = each.path + "\n" + each.bytes.substr(0, 99);
        if (each.program == unreadable) {
            EXPECT_EQ(found.coverage.excludedPaths->size(), 1U) << shown;
            EXPECT_EQ(found.coverage.issues.size(), 1U) << shown;
            EXPECT_TRUE(found.backgroundItems->empty()) << shown;
            continue;
        }
        ASSERT_EQ(found.backgroundItems->size(), 1U) << shown;
        const BackgroundItem& item = *found.backgroundItems->front();
        EXPECT_EQ(item.program, each.program) << shown;
        EXPECT_EQ(item.identifier, textFromBytes(item.identifier)) << shown;
        // Without a closing quote the program is everything up to the end of the line.
        const bool isStored = json::encoded(item).contains("secret");
        EXPECT_EQ(isStored, item.program == "/unclosed secret") << shown;
    }
    for (const auto& path : {admin + "bad.service", autostart, table}) {
        const MadeUpMachine machine;
        machine.write(path, "");
        fs::resize_file(machine.at(path), 15LL << 40);
        EXPECT_EQ(machine.observed().coverage.excludedPaths->size(), 1U) << path << " is too large";
    }
}

TEST(BackgroundChanges, LeaveOutLinksAndPipes) {
    const MadeUpMachine machine;
    const test::TemporaryFolder outside;
    outside.write("evil.service", sshd);
    machine.link(admin + "evil.service", (outside / "evil.service").native());
    machine.link(admin + "a.service", "b.service");
    machine.link(admin + "b.service", "a.service");
    machine.link(admin + "long.service", std::string(300, 'x') + ".service");
    machine.link(admin + "loop.wants", "loop.wants");
    machine.link(admin + "x.service.d", outside.path().native());
    machine.write(admin + "bad.timer", "[Timer]\nUnit=a.service\n");
    machine.link(vendor + "bad.timer", "/dev/null");
    // Here /lib is no link, as on machines whose /usr is not merged. Its units are still those of
    // the distribution.
    machine.remove("/lib");
    machine.write("/lib/systemd/system/plumbing.service", "[Service]\nExecStart=/x\n");
    machine.link("/usr/lib/systemd/user", outside.path().native());
    machine.link("/etc/cron.d", "/etc/cron.d");
    machine.write("/var/spool/cron/crontabs/me", "* * * * * /x\n");
    fs::create_directories(machine.at("/usr/lib/systemd/system/pipe.service.d"));
    ::mkfifo(machine.at(admin + "pipe.service").c_str(), 0600);
    ::mkfifo(machine.at(vendor + "pipe.service.d/pipe.conf").c_str(), 0600);
    fs::create_directories(machine.at(admin + "bad.timer.d"));
    ::mkfifo(machine.at(admin + "bad.timer.d/pipe.conf").c_str(), 0600);
    fs::create_directories(machine.at("/etc/cron.daily/folder"));
    const FileDescriptor opened(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    ::inotify_add_watch(opened.get(), machine.at(admin + "pipe.service").c_str(), IN_OPEN);
    const Snapshot found = machine.observed();
    inotify_event event;
    EXPECT_EQ(::read(opened.get(), &event, sizeof event), -1)
        << "opening a device can have effects";
    ASSERT_EQ(found.backgroundItems->size(), 1U);
    EXPECT_EQ(found.backgroundItems->front()->identifier, "bad.timer");
    EXPECT_EQ(found.backgroundItems->front()->safeSettings->at("Disabled"), "No")
        << "masked only in the less preferred folder";
    EXPECT_EQ(found.coverage.excludedPaths,
              (std::set<std::string>{admin + "evil.service", admin + "pipe.service", "/etc/cron.d",
                                     "/etc/cron.daily/folder"}));
    EXPECT_EQ(found.coverage.notes,
              (std::vector<std::string>{
                  "Background items: the crontabs of users are not observed. Only the program "
                  "crontab may read them.",
                  "Background items: 1 symbolic links were skipped; their targets are not "
                  "followed."}));
    fs::permissions(machine.root(), fs::perms(0755));
    fs::permissions(machine.at("/var/spool/cron"), fs::perms::none);
    const test::OrdinaryUser user(machine.root());
    EXPECT_EQ(machine.observed().coverage.notes, found.coverage.notes);
}

TEST(BackgroundChanges, AreNotComparedWhereDefinitionsTakeTooMuchMemory) {
    for (const std::string folder : {"/etc/systemd/system/x.service.d", "/etc/xdg/autostart"}) {
        const MadeUpMachine machine;
        const auto ending = folder.ends_with(".d") ? ".conf" : ".desktop";
        for (std::size_t i = 0; i < RootReading::mostHeldBytes / KeyFile::maximumSize + 2; ++i) {
            const std::string file = folder + "/" + std::to_string(i) + ending;
            machine.write(file, "");
            fs::resize_file(machine.at(file), KeyFile::maximumSize);
        }
        const auto issues = machine.observed().coverage.issues;
        ASSERT_FALSE(issues.empty()) << folder;
        EXPECT_TRUE(issues.front().contains("cannot completely read " + folder)) << issues.front();
    }
}
