#include "core/base/JsonDecoder.h"

#include "core/base/Text.h"

#include <nlohmann/json.hpp>

namespace tidemark::json {

namespace {

using Tree = nlohmann::json;

/// How many bytes of a document an error message quotes at most.
constexpr std::size_t quotedLength = 60;

/// The document and the position at which the parser reads it. The handler moves the position
/// forward, past a value that it knows and the parser need not read.
class Input {
public:
    explicit Input(std::string_view bytes) : all(bytes) {}

    /// Reads the byte at the position of the input. The parser takes it by value, and all copies
    /// share that position.
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = char;
        using difference_type = std::ptrdiff_t;
        using pointer = const char*;
        using reference = const char&;

        explicit Iterator(Input* input) : input(input) {}
        reference operator*() const { return input->all[input->next]; }
        Iterator& operator++() {
            ++input->next;
            return *this;
        }
        /// Compares with the end only.
        bool operator==(const Iterator&) const { return input->next == input->all.size(); }

    private:
        Input* input;
    };

    Iterator iterator() { return Iterator(this); }

    /// The index of the byte that is read next.
    std::size_t position() const { return next; }
    std::string_view from(std::size_t begin) const { return all.substr(begin); }
    /// The text from `begin` to the position.
    std::string_view since(std::size_t begin) const { return all.substr(begin, next - begin); }

    void skip(std::size_t count) {
        next += count;
        skipped += count;
    }
    /// The number of bytes skipped, which the positions that the parser reports leave out.
    std::size_t skippedBytes() const { return skipped; }

private:
    std::string_view all;
    std::size_t next = 0;
    std::size_t skipped = 0;
};

/// Receives the tokens of a document and passes each to the reader of the value that it fills.
/// There is one frame for each open object or array.
class Handler final : public nlohmann::json_sax<Tree> {
public:
    Handler(Input& input, Target document) : input(input), root(document) {}

    bool null() override {
        if (skipping())
            return true;
        const Target outer = next();
        if (outer.reader && !outer.reader->null(outer.value))
            mismatch(outer, "null");
        return true;
    }
    bool boolean(bool value) override {
        return scalar([&](Target to) { return to.reader->boolean(to.value, value); },
                      value ? "true" : "false");
    }
    bool number_integer(number_integer_t value) override {
        return scalar([&](Target to) { return to.reader->integer(to.value, value); }, "a number");
    }
    bool number_unsigned(number_unsigned_t value) override {
        if (value > static_cast<number_unsigned_t>(std::numeric_limits<std::int64_t>::max()))
            return number_float(static_cast<double>(value), std::to_string(value));
        return number_integer(static_cast<number_integer_t>(value));
    }
    bool number_float(number_float_t value, const string_t& token) override {
        return scalar([&](Target to) { return to.reader->real(to.value, value); },
                      std::string_view(token).substr(0, quotedLength));
    }
    bool string(string_t& value) override {
        return scalar([&](Target to) { return to.reader->text(to.value, value); }, "text");
    }
    bool binary(binary_t&) override { return false; }

    bool start_object(std::size_t) override {
        return open([](Target to) { return to.reader->beginObject(to.value); }, "an object");
    }
    bool key(string_t& name) override {
        if (skipping())
            return true;
        Frame& frame = top();
        const auto seen = frame.seen;
        frame.key = name;
        frame.pending = frame.inner.reader->member(frame.inner.value, name, frame.seen);
        frame.isField = frame.seen != seen;
        return true;
    }
    bool end_object() override {
        if (!skipping()) {
            // The path in the error is that of the object, not of its last member.
            Frame& frame = top();
            frame.key.clear();
            frame.inner.reader->endObject(frame.inner.value, frame.seen);
        }
        return close();
    }
    bool start_array(std::size_t) override {
        const bool done =
            open([](Target to) { return to.reader->beginArray(to.value); }, "an array");
        if (!skipping())
            top().isArray = true;
        return done;
    }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception& reason) override {
        // 406: a number too large for a double.
        throw ValueError(
            (reason.id == 406 ? "a number is out of range at byte " : "not valid JSON at byte ")
            + std::to_string(position + input.skippedBytes()));
    }

    /// The path of the current value, such as `snapshots[3].coverage`; empty for the document. A
    /// key that is no field, such as the name of a folder, is quoted: `breakdown["Letters"]`.
    std::string path() const {
        std::string text;
        for (std::size_t level = 0; level < depth; ++level) {
            const Frame& frame = frames[level];
            if (frame.isArray) {
                if (frame.count > 0)
                    text += "[" + std::to_string(frame.count - 1) + "]";
            } else if (!frame.key.empty()) {
                const auto key = frame.key.substr(0, quotedLength);
                text += frame.isField ? (text.empty() ? "" : ".") + key : "[\"" + key + "\"]";
            }
        }
        return text;
    }

private:
    struct Frame {
        Target outer{};
        Target inner{};
        Target pending{};
        /// Where the text of the object or array begins.
        std::size_t begin = 0;
        std::string key{};
        std::uint64_t seen = 0;
        std::size_t count = 0;
        bool isArray = false;
        bool isField = false;
    };

    bool skipping() const { return skipDepth > 0; }

    Frame& top() { return frames[depth - 1]; }
    /// Frames are reused, and with them the memory of their keys.
    void push(Target outer, Target inner) {
        if (depth == frames.size())
            frames.emplace_back();
        Frame& frame = frames[depth++];
        frame.outer = outer;
        frame.inner = inner;
        frame.pending = {};
        frame.begin = input.position() - 1;
        frame.key.clear();
        frame.seen = 0;
        frame.count = 0;
        frame.isArray = false;
    }

    /// The value that the current token begins.
    Target next() {
        if (depth == 0)
            return root;
        Frame& frame = top();
        if (!frame.isArray)
            return std::exchange(frame.pending, {});
        ++frame.count;
        return frame.inner.reader->element(frame.inner.value);
    }

    template <class Accept>
    bool scalar(Accept accept, std::string_view found) {
        if (skipping())
            return true;
        const Target outer = next();
        if (!outer.reader)
            return true;
        if (!accept(outer.reader->open(outer.value)))
            mismatch(outer, found);
        outer.reader->close(outer.value, {}, pool);
        return true;
    }

    /// The parser has read the bracket that opens the object or array, and nothing after it.
    template <class Begin>
    bool open(Begin begin, std::string_view found) {
        if (skipping()) {
            ++skipDepth;
            return true;
        }
        const Target outer = next();
        if (!outer.reader) {
            skipDepth = 1;
            return true;
        }
        const std::size_t known =
            outer.reader->recall(outer.value, input.from(input.position() - 1), pool);
        if (known > 0) {
            // Leaves the closing bracket, so that the parser sees a complete, empty value.
            input.skip(known - 2);
            skipDepth = 1;
            return true;
        }
        const Target inner = outer.reader->open(outer.value);
        if (!begin(inner))
            mismatch(outer, found);
        push(outer, inner);
        return true;
    }

    bool close() {
        if (skipping()) {
            --skipDepth;
            return true;
        }
        const Target outer = top().outer;
        const Target inner = top().inner;
        const std::string_view text = input.since(top().begin);
        --depth;
        if (inner.reader != outer.reader)
            inner.reader->close(inner.value, text, pool);
        outer.reader->close(outer.value, text, pool);
        return true;
    }

    [[noreturn]] static void mismatch(Target target, std::string_view found) {
        throw ValueError("expected " + std::string(target.reader->expected()) + ", found "
                         + std::string(found));
    }

    Input& input;
    Target root;
    /// The first `depth` frames are open; the others are kept for reuse.
    std::vector<Frame> frames;
    std::size_t depth = 0;
    InternPool pool;
    std::size_t skipDepth = 0;
};

} // namespace

void throwUnknownValue(std::string_view text) {
    throw ValueError("unknown value \"" + oneLine(text.substr(0, quotedLength)) + "\"");
}

void detail::decodeInto(std::string_view bytes, const ValueReader& reader, void* value) {
    if (bytes.empty())
        throw DecodingError("the document is empty");
    // The parser takes a NUL for the end of its input and would ignore what follows.
    if (const std::size_t nul = bytes.find('\0'); nul != std::string_view::npos)
        throw DecodingError("not valid JSON at byte " + std::to_string(nul + 1));
    Input input(bytes);
    Handler handler(input, {&reader, value});
    try {
        Tree::sax_parse(input.iterator(), input.iterator(), &handler);
    } catch (const ValueError& error) {
        const std::string path = handler.path();
        throw DecodingError((path.empty() ? "" : oneLine(path) + ": ") + error.what());
    }
}

} // namespace tidemark::json
