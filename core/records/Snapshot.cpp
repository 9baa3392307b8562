#include "core/records/Snapshot.h"

#include "core/base/JsonEncoder.h"
#include "core/base/JsonReaders.h"

namespace tidemark {

template const json::ValueReader& json::readerOf<Snapshot>();
template void json::encode(json::JsonWriter&, const Snapshot&);

} // namespace tidemark
