#pragma once

#include "app/capture/RecommendedFolder.h"

#include <QCoroTask>
#include <vector>

namespace tidemark {

class Recorder;

/// The first choice of the folders to monitor.
namespace firstFolders {

/// Those of the folders that can be opened now. Blocks.
std::vector<RecommendedFolder> readable(std::vector<RecommendedFolder> folders);

/// Monitors those of `folders` that can be read, and counts the choice as made. In a recorder that
/// runs, a capture follows. Where the program ends meanwhile, the choice is not counted. Throws
/// `Error`, and then the choice is not counted either.
QCoro::Task<void> choose(Recorder& recorder, std::vector<RecommendedFolder> folders);

} // namespace firstFolders

} // namespace tidemark
