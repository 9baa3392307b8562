#pragma once

#include "app/settings/FolderManagerPage.h"
#include "views/base/RoundedPanel.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace tidemark {

class ElidedLabel;

/// A folder that is or can be observed: its name, its path, whether it can be read, and what the
/// user can do about it. The check box follows what is presented, not the click.
class MonitoredFolderRow : public RoundedPanel {
    Q_OBJECT

public:
    explicit MonitoredFolderRow(QWidget* parent = nullptr);

    void present(const FolderManagerPage::Row& row);
    /// The controls in the order of the Tab key.
    std::array<QWidget*, 2> controls() const;

Q_SIGNALS:
    void monitorRequested(const tidemark::FolderManagerPage::Row& row);
    void stopRequested(const tidemark::FolderManagerPage::Row& row);

private:
    void ask(bool isOn);

    FolderManagerPage::Row shown;
    QCheckBox* box;
    ElidedLabel* path;
    QLabel* status;
    QPushButton* allowing;
};

} // namespace tidemark
