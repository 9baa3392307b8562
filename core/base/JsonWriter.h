#pragma once

#include "core/base/Date.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tidemark::json {

/// Writes JSON in pieces, so that no tree of a document is built. The caller balances begin and
/// end; commas are written automatically.
class JsonWriter {
public:
    using Output = std::function<void(std::string_view)>;

    /// Stored documents have seconds since 2001; exported reports have ISO 8601 texts.
    enum class DateForm { seconds, iso8601 };
    /// On one line without blanks, or one value per line, indented by two blanks per level.
    enum class Layout { compact, indented };

    /// `output` is called with the bytes in pieces, the last of them from `finish`.
    explicit JsonWriter(Output output, DateForm dateForm = DateForm::seconds,
                        Layout layout = Layout::compact)
        : output(std::move(output)), dateForm(dateForm), layout(layout) {}

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    void key(std::string_view name);

    /// Bytes that are not UTF-8 are written as U+FFFD, so that no name makes a save fail.
    /// Characters that are not printable (`isPrintable`) are escaped, also where JSON does not
    /// require it, as from U+007F to U+009F: a terminal would interpret them.
    void text(std::string_view value);
    void integer(std::int64_t value);
    /// The shortest text that reads back as the same double. Throws `Error` for NaN and infinity.
    void real(double value);
    /// As `DateForm::seconds`, written by `real`. As `DateForm::iso8601`, a date out of the range
    /// of that format is clamped to it, and NaN is written as null.
    void date(Date value);
    void boolean(bool value);
    void null();

    void finish();

private:
    /// What was written before the next value or key.
    enum class Place { start, key, value };

    void open(char bracket);
    void close(char bracket);
    void beginValue();
    void endValue();
    void beginLine();
    void quoted(std::string_view value);

    Output output;
    DateForm dateForm;
    Layout layout;
    std::string buffer;
    Place place = Place::start;
    std::size_t depth = 0;
};

} // namespace tidemark::json
