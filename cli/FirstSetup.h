#pragma once

#include "app/capture/RecommendedFolder.h"
#include "recorder/SetupChoice.h"

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace tidemark {

class Recorder;

/// The folders to monitor after the first start. If `setup` is `recommended`, all recommended ones
/// that can be read; if it is `none`, none. Without `setup` it lists the recommended folders on the
/// terminal, says which can't be read, and asks; without a terminal it prints that no folders have
/// been chosen yet. Absent when they were chosen before, when the user is to choose them with
/// `tidemark folders`, and when the input ended or `stop` was requested.
std::optional<std::vector<RecommendedFolder>>
firstSetup(Recorder& recorder, std::optional<SetupChoice> setup, const std::stop_token& stop);

/// Parses the answer to the question: numbers of the `offered` folders from 1 on, separated by
/// blanks or commas, "none", or "all" or an empty text for all of them. Absent when it can't be
/// parsed.
std::optional<std::vector<RecommendedFolder>>
chosenFolders(const std::vector<RecommendedFolder>& offered, const std::string& answer);

} // namespace tidemark
