#pragma once

#include "app/capture/RecommendedFolder.h"
#include "recorder/SetupChoice.h"

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace tidemark {

class Recorder;

/// The folders to monitor after the first start: all recommended ones for `recommended`, none for
/// `none`. Without `setup` it lists the readable folders on the terminal and asks; without a
/// terminal it prints that the folders are still to be chosen. Absent when they were chosen before,
/// are left to `tidemark folders`, or `stop` was requested.
std::optional<std::vector<RecommendedFolder>>
firstSetup(Recorder& recorder, std::optional<SetupChoice> setup, const std::stop_token& stop);

/// Parses the answer to the question: numbers of the `offered` folders from 1 on, separated by
/// blanks or commas, "none", or "all" or an empty text for all of them. Absent when it can't be
/// parsed.
std::optional<std::vector<RecommendedFolder>>
chosenFolders(const std::vector<RecommendedFolder>& offered, const std::string& answer);

} // namespace tidemark
