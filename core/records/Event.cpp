#include "core/records/Event.h"

#include "core/base/JsonEncoder.h"
#include "core/base/JsonReaders.h"

namespace tidemark {

template const json::ValueReader& json::readerOf<Event>();
template void json::encode(json::JsonWriter&, const Event&);

} // namespace tidemark
