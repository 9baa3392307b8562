#include "platform/linux/ApplicationFinder.h"

#include "tests/support/TemporaryFolder.h"

#include <QProcess>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace tidemark;

namespace {

struct ApplicationFinderTest : testing::Test {
    void add(const std::string& name, const std::string& keys,
             const std::string& folder = "first") const {
        data.write(folder + "/" + name + ".desktop", "[Desktop Entry]\nType=Application\n" + keys);
    }
    static std::string id(const std::optional<ClipApplication>& application) {
        return application ? application->id + "=" + application->name : "none";
    }

    const test::TemporaryFolder data;
    ApplicationFinder finder{DesktopEntries({data / "first", data / "second"})};
};

} // namespace

TEST_F(ApplicationFinderTest, FindsTheEntryOfAUnit) {
    add("org.gnome.Foo-Bar", "Name=Foo\n");
    add("kate", "Name=Kate\n");
    add("kde/marble", "Name=Marble\n");
    add("kate", "Name=Other\n", "second");
    add("gone", "Hidden=true\nName=Gone\n");
    add("gone", "Name=Gone\n", "second");
    const std::pair<const char*, const char*> cases[] = {
        {R"(app-gnome-org.gnome.Foo\x2dBar-4711.scope)", "org.gnome.Foo-Bar=Foo"},
        {"app-org.gnome.Foo-Bar-4711.scope", "org.gnome.Foo-Bar=Foo"},
        {"app-KDE-kate@abcdef0123.service", "kate=Kate"},
        {"app-flatpak-kde-marble-99.scope", "kde-marble=Marble"},
        {"app-gone-1.scope", "none"},
        {"app-unknown-1.scope", "none"},
        {"session-2.scope", "none"},
        {"", "none"},
    };
    for (const auto& [unit, expected] : cases)
        EXPECT_EQ(id(finder.ofUnit(unit)), expected) << unit;
}

TEST_F(ApplicationFinderTest, FindsTheEntryOfAWindowAndOfAProgram) {
    add("org.example.Editor", "Name=Editor\nStartupWMClass=ed\n");
    add("org.example.Tests", "Name=Tests\nExec=env A=1 \"/usr/bin/tidemark_platform_tests\" %f\n");
    EXPECT_EQ(id(finder.ofWindow({"org.example.Editor"}, {"other"})), "org.example.Editor=Editor");
    EXPECT_EQ(id(finder.ofWindow({"not.installed"}, {"ed"})), "not.installed=not.installed");
    EXPECT_EQ(id(finder.ofWindow({"not.installed", "org.example.Editor"}, {})),
              "org.example.Editor=Editor");
    EXPECT_EQ(id(finder.ofWindow({}, {"x", "ED"})), "org.example.Editor=Editor");
    EXPECT_EQ(id(finder.ofWindow({}, {"Org.Example.Editor"})), "org.example.Editor=Editor");
    EXPECT_EQ(id(finder.ofWindow({}, {"XTerm"})), "xterm=XTerm");
    EXPECT_EQ(id(finder.ofWindow({}, {})), "none");
    const std::pair<const char*, const char*> named[] = {
        {"org.example.Editor", "org.example.Editor=Editor"},
        {"Ed", "org.example.Editor=Editor"},
        {"org.example.Unknown", "org.example.Unknown=org.example.Unknown"},
    };
    for (const auto& [window, expected] : named)
        EXPECT_EQ(id(finder.ofNamedWindow(window)), expected);
    EXPECT_EQ(id(finder.ofWindow({}, {"XTerm"}, ::getpid())), "org.example.Tests=Tests");
    EXPECT_EQ(id(finder.ofProcess(::getpid())), "org.example.Tests=Tests");
    add("second-one", "Name=Second\nExec=tidemark_platform_tests\n");
    EXPECT_EQ(id(finder.ofProcess(::getpid())), "none") << "two entries start it";
    EXPECT_EQ(id(finder.ofProcess(0)), "none");
}

TEST_F(ApplicationFinderTest, FindsTheProgramOfACommand) {
    const char* const commands[] = {
        "tidemark_platform_tests",
        R"("/opt/My App/tidemark_platform_tests" %U)",
        "env A=1 \"B=1 2\" /usr/bin/tidemark_platform_tests",
        "env -i -u LANG --unset=HOME --unset TZ tidemark_platform_tests",
    };
    for (const auto* command : commands) {
        const test::TemporaryFolder folder;
        folder.write("it.desktop",
                     std::string("[Desktop Entry]\nType=Application\nName=It\nExec=") + command);
        ApplicationFinder one{DesktopEntries({folder.path()})};
        EXPECT_EQ(id(one.ofProcess(::getpid())), "it=It") << command;
    }
}

TEST_F(ApplicationFinderTest, PrefersTheFirstFolderAndSeesWhatIsAddedBelowIt) {
    add("one", "Name=One\nStartupWMClass=same\n");
    add("two", "Name=Two\nStartupWMClass=same\n", "second");
    add("kde/marble", "Name=Marble\n");
    EXPECT_EQ(id(finder.ofWindow({}, {"same"})), "one=One");
    add("kde/late", "Name=Late\nStartupWMClass=late\n");
    std::filesystem::last_write_time(data / "first/kde",
                                     std::filesystem::file_time_type::clock::now()
                                         + std::chrono::seconds(5));
    EXPECT_EQ(id(finder.ofWindow({}, {"late"})), "kde-late=Late");
}

TEST_F(ApplicationFinderTest, FindsAProgramThatWasReplacedWhileItRuns) {
    add("org.example.Vault", "Name=Vault\nExec=vault\n");
    std::filesystem::copy_file("/bin/sleep", data / "vault");
    QProcess vault;
    vault.start(QString::fromStdString((data / "vault").native()), {QStringLiteral("600")});
    ASSERT_TRUE(vault.waitForStarted());
    std::filesystem::remove(data / "vault");
    EXPECT_EQ(id(finder.ofProcess(static_cast<pid_t>(vault.processId()))),
              "org.example.Vault=Vault");
    vault.kill();
    vault.waitForFinished();
}
