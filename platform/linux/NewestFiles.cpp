#include "platform/linux/NewestFiles.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

bool isNewer(const NewestFiles::File& file, const NewestFiles::File& other) {
    return file.latest > other.latest;
}

} // namespace

void NewestFiles::add(File file) {
    if (files.size() == most) {
        if (!isNewer(file, files.front()))
            return;
        std::ranges::pop_heap(files, isNewer);
        files.pop_back();
    }
    files.push_back(std::move(file));
    std::ranges::push_heap(files, isNewer);
}

std::vector<NewestFiles::File> NewestFiles::take() {
    std::ranges::sort_heap(files, isNewer);
    return std::exchange(files, {});
}

} // namespace tidemark
