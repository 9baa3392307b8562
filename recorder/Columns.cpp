#include "recorder/Columns.h"

#include "core/base/Utf8.h"

namespace tidemark {

std::size_t columns(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t place = 0; place < text.size(); ++count)
        utf8::next(text, place);
    return count;
}

} // namespace tidemark
