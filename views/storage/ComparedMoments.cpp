#include "views/storage/ComparedMoments.h"

#include <algorithm>

namespace tidemark {

void ComparedMoments::toggle(const Moment& moment) {
    if (std::erase(marked, moment) > 0)
        return;
    if (isComplete())
        marked.erase(marked.begin());
    marked.push_back(moment);
}

const ComparedMoments::Moment& ComparedMoments::earlier() const {
    return *std::ranges::min_element(marked, {}, &Moment::at);
}

const ComparedMoments::Moment& ComparedMoments::later() const {
    return marked[0] == earlier() ? marked[1] : marked[0];
}

} // namespace tidemark
