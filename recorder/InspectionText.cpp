#include "recorder/InspectionText.h"

#include "core/base/Text.h"
#include "core/presentation/InspectionWords.h"
#include "recorder/Columns.h"
#include "recorder/TextStyle.h"

#include <algorithm>

namespace tidemark {

namespace {

class Printer {
public:
    explicit Printer(bool withColour) : colour(withColour) {}

    std::string text(const EventInspection& inspection) {
        line(styled(oneLine(inspection.title), textStyle::bold, colour));
        line(oneLine(inspection.subtitle));
        for (const auto& section : inspection.sections)
            add(section);
        return std::move(out);
    }

private:
    void line(const std::string& text) {
        if (!text.empty())
            out += text + "\n";
    }

    void add(const InspectionSection& section) {
        out += "\n";
        line(styled(oneLine(section.heading), textStyle::bold, colour));
        std::size_t width = 0;
        for (const auto& row : section.rows)
            width = std::max(width, columns(row.label));
        for (const auto& row : section.rows)
            line(styled(row.label, textStyle::dim, colour)
                 + std::string(width - columns(row.label) + 2, ' ') + oneLine(row.value));
        for (const auto& change : section.changes)
            line(oneLine(change.subject) + (change.growth ? " " + signedBytes(*change.growth) : "")
                 + ": " + oneLine(change.before) + inspectionWords::arrow + oneLine(change.after));
        for (const auto& sentence : section.sentences)
            line(oneLine(sentence));
    }

    const bool colour;
    std::string out;
};

} // namespace

std::string textOf(const EventInspection& inspection, bool withColour) {
    return Printer(withColour).text(inspection);
}

} // namespace tidemark
