#include "platform/linux/AutostartItem.h"

#include "app/ports/ApplicationSource.h"
#include "core/base/Error.h"
#include "core/base/Files.h"
#include "core/capture/DesktopEntry.h"
#include "core/system/UserFolders.h"
#include "platform/linux/PathList.h"

#include <QStandardPaths>
#include <cerrno>

#include <unistd.h>

namespace tidemark {

namespace {

namespace fs = std::filesystem;
using Status = LoginItem::Status;

/// Marks a file in which this program has hidden an entry of the system. The key "Hidden" alone
/// does not show that: desktops write it when the user turns an entry off.
constexpr const char* ownMark = "X-Tidemark-Removed";

bool is(const KeyFile& entry, const char* key, const char* value) {
    return entry.value(DesktopEntry::group, key) == value;
}

/// Absent when there is no such file or it is no desktop entry.
std::optional<KeyFile> entryAt(const fs::path& file) {
    try {
        auto entry =
            KeyFile::parse(readFile(file, KeyFile::maximumSize), KeyFile::Continuation::none);
        if (entry && entry->hasGroup(DesktopEntry::group))
            return std::move(*entry);
    } catch (const FileError&) {
        // Desktops ignore it as well.
    }
    return std::nullopt;
}

bool hasProgram(const KeyFile& entry) {
    const auto program = entry.value(DesktopEntry::group, "TryExec");
    return !program
           || !QStandardPaths::findExecutable(QString::fromStdString(KeyFile::unescaped(*program)))
                   .isEmpty();
}

Status statusOf(const KeyFile& entry) {
    if (is(entry, ownMark, "true"))
        return Status::notRegistered;
    if (is(entry, "Hidden", "true") || is(entry, "X-GNOME-Autostart-enabled", "false"))
        return Status::requiresApproval;
    return hasProgram(entry) ? Status::enabled : Status::notFound;
}

/// The text with a backslash before each of these characters.
std::string escaped(std::string_view text, std::string_view characters) {
    std::string result;
    for (const char c : text) {
        if (characters.contains(c))
            result += '\\';
        result += c;
    }
    return result;
}

} // namespace

AutostartItem::Places AutostartItem::Places::current() {
    Places places{.own = UserFolders::configuration() / "autostart", .shared = {}};
    for (const auto& folder : pathList("XDG_CONFIG_DIRS", "/etc/xdg"))
        places.shared.push_back(folder / "autostart");
    return places;
}

fs::path AutostartItem::path() const {
    fs::path file = places.own / ApplicationSource::ownIdentifier;
    file += ".desktop";
    return file;
}

std::optional<KeyFile> AutostartItem::sharedEntry() const {
    for (const auto& folder : places.shared)
        if (auto entry = entryAt(folder / path().filename()))
            return entry;
    return std::nullopt;
}

Status AutostartItem::status() const {
    if (const auto own = entryAt(path()))
        return statusOf(*own);
    const auto shared = sharedEntry();
    return shared ? statusOf(*shared) : Status::notRegistered;
}

void AutostartItem::add() {
    const auto before = status();
    if (before == Status::enabled || before == Status::requiresApproval)
        return;
    write("Name=Tidemark\nExec=" + quoted(command) + "\nTryExec=" + escaped(command.front(), "\\")
          + "\nX-GNOME-Autostart-enabled=true\n");
}

QCoro::Task<void> AutostartItem::remove() {
    if (sharedEntry())
        write("Name=Tidemark\nHidden=true\n" + std::string(ownMark) + "=true\n");
    else if (::unlink(path().c_str()) == 0)
        flushFolder(places.own);
    else if (errno != ENOENT)
        throw FileError::ofSystem(path(), "could not be removed", errno);
    co_return;
}

void AutostartItem::write(const std::string& text) const {
    createPrivateFolders(places.own);
    replaceFile(path(), "[Desktop Entry]\nType=Application\n" + text);
}

std::string AutostartItem::quoted(const std::vector<std::string>& command) {
    std::string line;
    for (const std::string& word : command) {
        if (word.find_first_of(std::string_view("\n\r\0", 3)) != word.npos)
            throw Error("A program with a line break in its path can’t be started at login.");
        // First the escapes within the quotes of a command and "%%" for "%", then those of each
        // text in a desktop entry.
        std::string inQuotes = escaped(word, "\"`$\\");
        for (auto place = inQuotes.find('%'); place != word.npos;
             place = inQuotes.find('%', place + 2))
            inQuotes.insert(place, 1, '%');
        line += (line.empty() ? "\"" : " \"") + escaped(inQuotes, "\\") + '"';
    }
    return line;
}

} // namespace tidemark
