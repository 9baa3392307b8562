#pragma once

#include "app/capture/FolderGrant.h"
#include "recorder/CommandContext.h"
#include "recorder/FilePath.h"

#include <QCoroTask>
#include <string>

namespace tidemark {

/// One change of the monitored folders by a command: no other begins until this object ends. Main
/// thread only.
class FolderChange {
public:
    /// Throws `Error` while another change is being made: two at once would end each other's.
    explicit FolderChange(const CommandContext& where);
    ~FolderChange();
    FolderChange(const FolderChange&) = delete;
    FolderChange& operator=(const FolderChange&) = delete;

    /// A running recorder takes a capture then, which is not waited for.
    void finish();

private:
    const CommandContext& context;
};

/// A path as it was given: as text, and with links resolved.
struct GivenFolder {
    std::string text;
    std::string canonical;

    static QCoro::Task<GivenFolder> of(FilePath path);
    /// The monitored folder that it means. Throws `Error` when there is none.
    FolderGrant granted(const FolderAccess& folders) const;
};

} // namespace tidemark
