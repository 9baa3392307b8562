#include "app/ports/SystemServices.h"

#include "core/system/UserFolders.h"
#include "platform/linux/AutostartItem.h"
#include "platform/linux/FolderFileIndex.h"
#include "platform/linux/LogindMonitor.h"
#include "platform/linux/UnitApplications.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications,
                                SleepAndSessionSource::Settle settle) {
    return std::make_unique<LogindMonitor>(MessageBus::system(), notifications, std::move(settle));
}

std::unique_ptr<ApplicationSource> systemServices::applications() {
    return std::make_unique<UnitApplications>(UnitApplications::Setup{});
}

std::optional<std::string> systemServices::applicationsAbsence() {
    // The socket of the user's service manager.
    const auto runtime = UserFolders::runtime();
    std::error_code unknown;
    if (runtime && std::filesystem::exists(*runtime / "systemd/private", unknown))
        return std::nullopt;
    return "No service manager runs for this user, so launches of applications can’t be noticed.";
}

std::unique_ptr<FileIndex> systemServices::fileIndex() {
    return std::make_unique<FolderFileIndex>(FolderFileIndex::Setup{});
}

std::unique_ptr<LoginItem> systemServices::loginItem(std::vector<std::string> command) {
    return std::make_unique<AutostartItem>(AutostartItem::Places::current(), std::move(command));
}

} // namespace tidemark
