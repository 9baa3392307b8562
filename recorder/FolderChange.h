#pragma once

#include "app/capture/FolderGrant.h"
#include "recorder/CommandContext.h"
#include "recorder/FilePath.h"

#include <QCoroTask>
#include <string>

namespace tidemark {

/// A change of the monitored folders by a command. No other change can begin until `finish` is
/// called or this object is destroyed. Main thread only.
class FolderChange {
public:
    /// Throws `Error` while another change is being made.
    explicit FolderChange(const CommandContext& context);
    ~FolderChange();
    FolderChange(const FolderChange&) = delete;
    FolderChange& operator=(const FolderChange&) = delete;

    /// Ends the change. A running recorder takes a capture after it, without waiting for it here.
    void finish();

private:
    const CommandContext& context;
};

/// A path from the command line, as text and with links resolved.
struct GivenFolder {
    std::string text;
    std::string canonical;

    static QCoro::Task<GivenFolder> of(FilePath path);
    /// The monitored folder at this path. Throws `Error` when there is none.
    FolderGrant granted(const FolderAccess& folders) const;
};

} // namespace tidemark
