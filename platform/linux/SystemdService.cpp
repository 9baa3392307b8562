#include "platform/linux/SystemdService.h"

#include "core/base/Error.h"
#include "core/base/Text.h"

#include <QProcess>
#include <QStandardPaths>
#include <charconv>
#include <filesystem>
#include <map>
#include <ranges>

namespace tidemark {

namespace {

/// Longer than a recorder may take to end (`Interruption::longestEnd`).
constexpr int longestWait = 60'000;

QByteArray systemctl(const QStringList& words) {
    // sd_booted(3)
    if (!std::filesystem::is_directory("/run/systemd/system"))
        throw Error("This system was not started by systemd, so there is no service; tidemark run "
                    "records without one.");
    QProcess process;
    process.start(QStringLiteral("systemctl"), QStringList(QStringLiteral("--user")) + words);
    if (!process.waitForFinished(longestWait))
        throw Error("The service manager of the session did not answer: "
                    + asSentence(process.errorString().toStdString()));
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw Error("The service manager of the session refused: "
                    + asSentence(oneLine(trimmed(process.readAllStandardError().toStdString()))));
    return process.readAllStandardOutput();
}

void change(const char* verb) {
    systemctl({QString::fromLatin1(verb), QStringLiteral("--quiet"), QStringLiteral("--now"),
               QString::fromLatin1(SystemdService::unit)});
}

} // namespace

RecorderService::Status SystemdService::parse(std::string_view properties) {
    std::map<std::string_view, std::string_view> values;
    for (const auto part : std::views::split(properties, '\n')) {
        const std::string_view line(part.begin(), part.end());
        if (const auto place = line.find('='); place != line.npos)
            values.emplace(line.substr(0, place), line.substr(place + 1));
    }
    if (values["LoadState"] != "loaded")
        throw Error("The service " + std::string(unit)
                    + " is not installed; the package of Tidemark and make install bring it.");
    const auto active = values["ActiveState"];
    const auto number = values["MainPID"];
    Status status{.startsWithSession = values["UnitFileState"].starts_with("enabled"),
                  .activity = active == "failed"       ? Activity::failed
                              : active == "inactive"   ? Activity::stopped
                              : active == "activating" ? Activity::starting
                                                       : Activity::running};
    std::from_chars(number.data(), number.data() + number.size(), status.process);
    return status;
}

RecorderService::Status SystemdService::status() const {
    return parse(
        systemctl({QStringLiteral("show"),
                   QStringLiteral("--property=LoadState,UnitFileState,ActiveState,MainPID"),
                   QString::fromLatin1(unit)})
            .toStdString());
}

bool SystemdService::isEnabledByFiles() const {
    // Where systemctl puts a link to the unit (systemd.unit(5)).
    const auto links = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                       + QStringLiteral("/systemd/user/default.target.wants/");
    std::error_code error;
    return std::filesystem::is_symlink(
        std::filesystem::symlink_status(links.toStdString() + unit, error));
}

void SystemdService::enable() {
    status();
    change("enable");
}

void SystemdService::disable() {
    status();
    change("disable");
}

} // namespace tidemark
