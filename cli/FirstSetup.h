#pragma once

#include "app/capture/RecommendedFolder.h"
#include "recorder/SetupChoice.h"

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace tidemark {

class Recorder;

/// The folders that a first start is to monitor, and only a first one: all recommended ones for
/// `recommended`, none for `none`. Without a choice it asks on a terminal, showing what can be
/// read; without a terminal it says that the folders are still to be chosen. Absent when the choice
/// was made before, is left to `tidemark folders`, or `stop` ended the question.
std::optional<std::vector<RecommendedFolder>>
firstSetup(Recorder& recorder, std::optional<SetupChoice> setup, const std::stop_token& stop);

/// The folders that an answer means out of those that were offered: their numbers from 1 on, with
/// blanks or commas between them, "none", or all for "all" and the empty text. Absent when it
/// means nothing.
std::optional<std::vector<RecommendedFolder>>
chosenFolders(const std::vector<RecommendedFolder>& offered, const std::string& answer);

} // namespace tidemark
