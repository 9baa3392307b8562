#include "tests/support/MadeUpMachine.h"

#include "core/capture/DefinitionDescriptions.h"
#include "core/capture/SystemObserver.h"
#include "core/timeline/EventBuilder.h"
#include "tests/support/ManualClock.h"

namespace tidemark::test {

namespace fs = std::filesystem;

MadeUpMachine::MadeUpMachine() {
    for (const char* name : {"bin", "sbin", "lib"}) {
        folder.makeFolder(std::string("usr/") + name);
        fs::create_symlink(std::string("usr/") + name, folder / name);
    }
}

void MadeUpMachine::write(std::string_view path, std::string_view bytes) const {
    folder.write(path.substr(1), bytes);
}

void MadeUpMachine::link(std::string_view path, const std::string& target) const {
    fs::create_directories(at(path).parent_path());
    fs::create_symlink(target, at(path));
}

void MadeUpMachine::remove(std::string_view path) const {
    fs::remove_all(at(path));
}

Snapshot MadeUpMachine::observed() const {
    ManualClock clock;
    return SystemObserver::capture(ObservationOptions({}, {}, {}, MachineFiles::below(root())),
                                   clock);
}

std::string eventLines(const Snapshot& before, const Snapshot& after) {
    std::string lines;
    for (const Event& event : EventBuilder::build(before, after)) {
        lines += event.title + " " + event.path.value_or("");
        for (const Change& change : event.changes)
            if (const auto* changed = std::get_if<change::BackgroundChanged>(&change))
                for (const auto& line :
                     DefinitionDescriptions::changeDescriptions(*changed->before, *changed->after))
                    lines += "; " + line;
        lines += "\n";
    }
    return lines;
}

} // namespace tidemark::test
