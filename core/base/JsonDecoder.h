#pragma once

#include "core/base/Error.h"
#include "core/base/JsonReaders.h"

#include <string>
#include <string_view>

/// Reading side of the codec: a JSON document straight into records, with no tree in between.
namespace tidemark::json {

/// A document is no JSON, or not of the expected shape. `what()` says where, as a path of keys
/// and indices such as `snapshots[3].coverage`, and what is wrong there.
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
