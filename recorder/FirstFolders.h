#pragma once

#include "app/capture/RecommendedFolder.h"

#include <QCoroTask>
#include <vector>

namespace tidemark {

class Recorder;

/// Makes the first choice of folders to monitor.
namespace firstFolders {

/// The folders that can be opened now. Blocks.
std::vector<RecommendedFolder> readable(std::vector<RecommendedFolder> folders);

/// Monitors those of `folders` that can be read, and records that the choice was made. A running
/// recorder then takes a capture. If the program ends meanwhile, or on an `Error`, the choice is
/// not recorded.
QCoro::Task<void> choose(Recorder& recorder, std::vector<RecommendedFolder> folders);

} // namespace firstFolders

} // namespace tidemark
