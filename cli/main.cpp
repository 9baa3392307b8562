#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <cstdio>
int main() {
    using namespace tidemark;
    Snapshot s;
    s.applications.push_back(Application{"a", "b", "c", "d", "/e", Date{0.1}});
    auto t = json::encoded(s);
    auto u = json::decode<Snapshot>(t);
    puts(t.c_str());
    Event e;
    e.changes.push_back(change::ApplicationInstalled{{s.applications[0]}});
    auto et = json::encoded(e);
    puts(et.c_str());
    return !(u == s) || !(json::decode<Event>(et) == e);
}
