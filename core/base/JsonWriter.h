#pragma once

#include "core/base/Date.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tidemark::json {

/// Writes compact JSON piece by piece, so that no tree of a document is ever built. The caller
/// keeps begin and end in balance; commas come by themselves.
class JsonWriter {
public:
    using Output = std::function<void(std::string_view)>;

    /// Stored documents hold seconds since 2001; what people read holds ISO 8601 texts.
    enum class DateForm { seconds, iso8601 };

    /// `to` gets the bytes in pieces, the last of them with `finish`.
    explicit JsonWriter(Output to, DateForm form = DateForm::seconds)
        : output(std::move(to)), dateForm(form) {}

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    void key(std::string_view name);

    /// Bytes that are not UTF-8 are written as U+FFFD: a save never fails half-way for a name.
    void text(std::string_view value);
    void integer(std::int64_t value);
    /// The shortest text that reads back as the same double. Throws `Error` for NaN and infinity.
    void real(double value);
    /// Throws `Error` for a date that its form can't hold.
    void date(Date value);
    void boolean(bool value);
    void null();

    void finish();

private:
    void open(char bracket);
    void close(char bracket);
    void beginValue();
    void endValue();
    void quoted(std::string_view value);

    Output output;
    DateForm dateForm;
    std::string buffer;
    bool needsComma = false;
};

} // namespace tidemark::json
