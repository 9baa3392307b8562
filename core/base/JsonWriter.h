#pragma once

#include "core/base/Date.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tidemark::json {

/// Writes JSON piece by piece, so that no tree of a document is ever built. The caller keeps begin
/// and end in balance; commas come by themselves.
class JsonWriter {
public:
    using Output = std::function<void(std::string_view)>;

    /// Stored documents hold seconds since 2001; what people read holds ISO 8601 texts.
    enum class DateForm { seconds, iso8601 };
    /// On one line without blanks, or a line each value, indented by two blanks a level.
    enum class Layout { compact, indented };

    /// `to` gets the bytes in pieces, the last of them with `finish`.
    explicit JsonWriter(Output to, DateForm form = DateForm::seconds,
                        Layout style = Layout::compact)
        : output(std::move(to)), dateForm(form), layout(style) {}

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    void key(std::string_view name);

    /// Bytes that are not UTF-8 are written as U+FFFD: a save never fails half-way for a name.
    /// What is not printable is escaped, also where JSON allows it as it is: a terminal obeys the
    /// control characters from U+007F to U+009F as well.
    void text(std::string_view value);
    void integer(std::int64_t value);
    /// The shortest text that reads back as the same double. Throws `Error` for NaN and infinity.
    void real(double value);
    /// In the form of texts a date beyond what the form holds is the nearest that it does, and null
    /// for NaN; in seconds it is written by `real`.
    void date(Date value);
    void boolean(bool value);
    void null();

    void finish();

private:
    /// What the next value or key follows.
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
