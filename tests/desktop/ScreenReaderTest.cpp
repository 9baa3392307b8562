#include "tests/desktop/Desktop.h"

#include <QScopeGuard>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

using test::Desktop;

struct Widget {
    QString role;
    QString name;
    bool isFocusable;
};

std::vector<Widget> widgetsIn(const QByteArray& lines) {
    std::vector<Widget> widgets;
    for (const auto& line : QString::fromUtf8(lines).split(u'\n', Qt::SkipEmptyParts)) {
        const auto parts = line.split(u'\t');
        widgets.push_back({parts.value(0), parts.value(1), parts.value(2) == u"focusable"});
    }
    return widgets;
}

/// The index of the first widget whose name begins with `name`. Fails the test if there is none.
std::ptrdiff_t find(const std::vector<Widget>& widgets, const QString& name) {
    const auto found = std::ranges::find_if(
        widgets, [&](const Widget& each) { return each.name.startsWith(name); });
    EXPECT_NE(found, widgets.end()) << name.toStdString();
    return found - widgets.begin();
}

} // namespace

TEST_F(Desktop, IsReadByAScreenReaderInWholeSentences) {
    if (!std::filesystem::exists("/usr/libexec/at-spi-bus-launcher"))
        GTEST_SKIP() << "at-spi2-core is needed";
    const auto stuff = folder.makeFolder("Stuff");
    ASSERT_EQ(command({u"folders"_s, u"add"_s, QString::fromStdString(stuff.native())}), 0);
    ASSERT_EQ(command({u"capture"_s}), 0);
    folder.write("Stuff/film", "");
    std::filesystem::resize_file(stuff / "film", 8'000'000'000);
    ASSERT_EQ(command({u"capture"_s}), 0);
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    const auto restore = qScopeGuard([] { qunsetenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"); });
    startWindows();
    // The system's Python: another one in PATH would not find pyatspi.
    QProcess& reader = start("/usr/bin/python3",
                             {QString::fromUtf8(TIDEMARK_SCREEN_READER), u"tidemark-desktop"_s});
    ASSERT_EQ(end(reader), 0) << reader.readAllStandardError().toStdString();
    const auto widgets = widgetsIn(reader.readAllStandardOutput());
    for (const auto& widget : widgets)
        EXPECT_FALSE(widget.isFocusable && widget.name.isEmpty()) << widget.role.toStdString();
    const auto sidebar = find(widgets, u"Places"_s);
    const auto row = find(widgets, u"Stuff Grew in Size, +8 GB · Files in folder +8 GB, "_s);
    EXPECT_LT(sidebar, find(widgets, u"Storage, 1 event"_s));
    EXPECT_LT(sidebar, row) << "in the order in which they stand";
    EXPECT_LT(row, find(widgets, u"About this event"_s));
    EXPECT_TRUE(widgets.at(static_cast<std::size_t>(row)).isFocusable);
}
