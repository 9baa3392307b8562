#pragma once

#include "core/base/Error.h"
#include "core/base/JsonReaders.h"

#include <string>
#include <string_view>

/// The reading side of the codec: parses a JSON document directly into records, without a tree in
/// between.
namespace tidemark::json {

/// A document is not valid JSON or has another shape than expected. `what()` names the place, as a
/// path of keys and indices such as `snapshots[3].coverage`, and what is wrong there.
class DecodingError : public Error {
public:
    using Error::Error;
};

namespace detail {
void decodeInto(std::string_view bytes, const ValueReader& reader, void* value);
}

/// The record that a whole document holds. Unknown keys are ignored at any depth; a required key
/// that is missing, a wrong type or an unknown enumeration value throws `DecodingError`.
template <class T>
T decode(std::string_view bytes) {
    T value{};
    detail::decodeInto(bytes, readerOf<T>(), &value);
    return value;
}

} // namespace tidemark::json
