#pragma once

#include "app/settings/DeveloperSuggestions.h"

#include <QWidget>
#include <filesystem>
#include <vector>

class QCheckBox;
class QPushButton;
class QVBoxLayout;

namespace tidemark {

class DimLabel;

/// The folders of developers that the folder manager suggests.
class DeveloperSuggestionsView : public QWidget {
    Q_OBJECT

public:
    explicit DeveloperSuggestionsView(QWidget* parent = nullptr);

    /// A folder that was ticked stays ticked, unless it is monitored now.
    void present(const std::vector<DeveloperFolderSuggestion>& suggestions);

Q_SIGNALS:
    /// The user chose to have these folders monitored.
    void chosen(const std::vector<std::filesystem::path>& folders);

private:
    void addRow(const DeveloperFolderSuggestion& suggestion, bool isTicked);
    std::vector<std::filesystem::path> ticked() const;
    void refreshButton();

    std::vector<DeveloperFolderSuggestion> shown;
    /// One for each of `shown`.
    std::vector<QCheckBox*> boxes;
    DimLabel* note;
    QVBoxLayout* rows;
    QPushButton* monitor;
};

} // namespace tidemark
