#include "core/base/PropertyListLimits.h"

#include <algorithm>

namespace tidemark::PropertyList {

namespace {

/// The most bytes of text and data in a list once every reference is copied.
constexpr std::uint64_t maximumExpansion = std::uint64_t{64} << 20;
/// The most bytes that libplist may have to move while it replaces character references.
constexpr std::uint64_t maximumMoves = std::uint64_t{1} << 30;
/// The most elements that libplist may have to pass while it searches for repeated keys. A
/// dictionary of 4,096 entries stays below.
constexpr std::uint64_t maximumSteps = std::uint64_t{1} << 25;

/// Scans an XML list tag by tag, with quotes, comments and declarations parsed as libplist does.
/// Stops without a refusal at text that libplist rejects itself.
class XmlOutline {
public:
    explicit XmlOutline(std::string_view text) : text(text) {}

    std::optional<Failure> refusal() {
        if (text.find('\0') != std::string_view::npos)
            return Failure::malformed;
        while (place < text.size()) {
            const std::size_t bracket = std::min(text.find('<', place), text.size());
            countMoves(text.substr(place, bracket - place));
            place = bracket + 1;
            if (place >= text.size() || !passMarkup())
                break;
            if (levels.size() - 1 > maximumDepth || nodes > maximumNodes || moves > maximumMoves
                || steps > maximumSteps)
                return Failure::beyondLimits;
        }
        return std::nullopt;
    }

private:
    void countMoves(std::string_view run) {
        moves += static_cast<std::uint64_t>(std::ranges::count(run, '&')) * run.size();
    }

    /// Skips the markup that begins with the "<" before `place`; false when its end is missing.
    bool passMarkup() {
        const auto rest = text.substr(place);
        if (rest.starts_with('?'))
            return passOutsideQuotes("?>");
        if (rest.starts_with("!--")) {
            place += 3;
            return pass("-->");
        }
        if (rest.starts_with("![CDATA[")) {
            place += 8;
            return pass("]]>");
        }
        if (rest.starts_with("!DOCTYPE"))
            return passDocumentType();
        return passTag();
    }

    bool pass(std::string_view end) {
        const std::size_t found = text.find(end, place);
        if (found == std::string_view::npos)
            return false;
        place = found + end.size();
        return true;
    }

    /// Moves to the first of `wanted` that is not between double quotes.
    bool findOutsideQuotes(std::string_view wanted) {
        while (place < text.size() && !wanted.contains(text[place])) {
            if (text[place] == '"')
                place = text.find('"', place + 1);
            if (place == std::string_view::npos)
                return false;
            ++place;
        }
        return place < text.size();
    }

    bool passOutsideQuotes(std::string_view end) {
        while (findOutsideQuotes(end.substr(0, 1))) {
            if (text.substr(place).starts_with(end)) {
                place += end.size();
                return true;
            }
            ++place;
        }
        return false;
    }

    bool passDocumentType() {
        if (!findOutsideQuotes("[>"))
            return false;
        if (text[place] == '[')
            return passOutsideQuotes("]>");
        ++place;
        return true;
    }

    bool passTag() {
        const std::size_t start = place;
        place = text.find_first_of(" \r\n\t<>", place);
        if (place == std::string_view::npos)
            return false;
        std::string_view name = text.substr(start, place - start);
        if (!findOutsideQuotes("<>") || text[place] != '>')
            return false;
        const bool empty = text[place - 1] == '/';
        ++place;
        if (empty && name.ends_with('/'))
            name.remove_suffix(1);
        count(name, empty);
        return true;
    }

    void count(std::string_view name, bool empty) {
        const bool closes = name.starts_with('/');
        if (closes) {
            name.remove_prefix(1);
        } else {
            ++nodes;
            if (levels.back().isDictionary)
                steps += levels.back().elements++;
        }
        if (name != "dict" && name != "array")
            return;
        if (closes && levels.size() > 1)
            levels.pop_back();
        else if (!closes && !empty)
            levels.push_back({.isDictionary = name == "dict"});
    }

    /// An open element and how many elements it has so far.
    struct Level {
        bool isDictionary;
        std::uint64_t elements = 0;
    };

    std::string_view text;
    std::size_t place = 0;
    /// The first level is the document itself: libplist adds what follows an empty root element to
    /// the document.
    std::vector<Level> levels{{.isDictionary = true}};
    std::size_t nodes = 0;
    std::uint64_t moves = 0;
    std::uint64_t steps = 0;
};

/// Computes the size of each object of a binary list including everything it refers to. The format
/// is an eight-byte magic, the objects, a table of their offsets, and a trailer of 32 bytes; an
/// object begins with a byte of type and size.
class BinaryOutline {
public:
    explicit BinaryOutline(std::string_view list) : list(list) {}

    std::optional<Failure> refusal() {
        if (!readTrailer())
            return Failure::malformed;
        if (objects > maximumNodes)
            return Failure::beyondLimits;
        known.resize(static_cast<std::size_t>(objects));
        const auto whole = extent(root, 0);
        if (!whole)
            return whole.error();
        return std::nullopt;
    }

private:
    struct Extent {
        enum class State : std::uint8_t { unknown, underWay, done };
        State state = State::unknown;
        std::uint32_t height = 0;
        std::uint64_t nodes = 0;
        std::uint64_t bytes = 0;
    };
    /// An object's type, the number of its elements, and where they begin.
    struct Head {
        unsigned type;
        std::uint64_t count;
        std::uint64_t start;
    };

    bool readTrailer() {
        constexpr std::size_t size = 32;
        if (list.size() < binaryMagic.size() + size)
            return false;
        const std::uint64_t trailer = list.size() - size;
        offsetSize = number(trailer + 6, 1);
        referenceSize = number(trailer + 7, 1);
        objects = number(trailer + 8, 8);
        root = number(trailer + 16, 8);
        table = number(trailer + 24, 8);
        return offsetSize >= 1 && offsetSize <= 8 && referenceSize >= 1 && referenceSize <= 8
               && root < objects && table >= binaryMagic.size() && table < trailer
               && objects <= (trailer - table) / offsetSize;
    }

    /// A big-endian number. The caller ensures that it lies within the list.
    std::uint64_t number(std::uint64_t start, std::uint64_t width) const {
        std::uint64_t value = 0;
        for (const char byte : list.substr(static_cast<std::size_t>(start), width))
            value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    }

    std::expected<Head, Failure> head(std::uint64_t index) const {
        std::uint64_t place = number(table + index * offsetSize, offsetSize);
        if (place < binaryMagic.size() || place >= table)
            return std::unexpected(Failure::malformed);
        const auto marker = static_cast<unsigned>(number(place++, 1));
        Head result{marker >> 4, marker & 0x0F, place};
        // For data and all types above except 8 (a UID), a size of 15 means that the real
        // size follows as an integer.
        if (result.count < 15 || result.type < 0x4 || result.type == 0x8)
            return result;
        const auto sizeMarker = number(place++, 1);
        const std::uint64_t width = std::uint64_t{1} << (sizeMarker & 0x0F);
        if (sizeMarker >> 4 != 1 || width > 8 || place + width > table)
            return std::unexpected(Failure::malformed);
        result.count = number(place, width);
        result.start = place + width;
        return result;
    }

    std::expected<Extent, Failure> extent(std::uint64_t index, std::size_t level) {
        if (index >= objects)
            return std::unexpected(Failure::malformed);
        Extent& entry = known[static_cast<std::size_t>(index)];
        if (entry.state == Extent::State::underWay)
            return std::unexpected(Failure::malformed);
        if (level + entry.height > maximumDepth)
            return std::unexpected(Failure::beyondLimits);
        if (entry.state == Extent::State::done)
            return entry;
        entry.state = Extent::State::underWay;
        const auto object = head(index);
        if (!object)
            return std::unexpected(object.error());
        const auto measured = measure(*object, level);
        if (!measured)
            return measured;
        entry = *measured;
        entry.state = Extent::State::done;
        return entry;
    }

    std::expected<Extent, Failure> measure(const Head& object, std::size_t level) {
        enum Type : unsigned {
            data = 4,
            ascii = 5,
            utf16 = 6,
            array = 10,
            set = 12,
            dictionary = 13
        };
        const std::uint64_t room = table - std::min(object.start, table);
        switch (object.type) {
        case data:
        case ascii:
            return leaf(object.count, room, 1);
        case utf16:
            if (object.count <= room / 2 && hasNul(object))
                return std::unexpected(Failure::malformed);
            return leaf(object.count, room, 2);
        case array:
        case set:
            return container(object, room, 1, level);
        case dictionary:
            return container(object, room, 2, level);
        default:
            return Extent{.nodes = 1};
        }
    }

    static std::expected<Extent, Failure> leaf(std::uint64_t count, std::uint64_t room,
                                               std::uint64_t width) {
        if (count > room / width)
            return std::unexpected(Failure::malformed);
        return Extent{.nodes = 1, .bytes = count * width};
    }

    bool hasNul(const Head& text) const {
        for (std::uint64_t unit = 0; unit < text.count; ++unit)
            if (number(text.start + 2 * unit, 2) == 0)
                return true;
        return false;
    }

    std::expected<Extent, Failure> container(const Head& object, std::uint64_t room,
                                             std::uint64_t references, std::size_t level) {
        if (object.count > room / referenceSize / references)
            return std::unexpected(Failure::malformed);
        Extent whole{.nodes = 1};
        for (std::uint64_t i = 0; i < object.count * references; ++i) {
            const auto part =
                extent(number(object.start + i * referenceSize, referenceSize), level + 1);
            if (!part)
                return part;
            whole.height = std::max(whole.height, part->height + 1);
            whole.nodes += part->nodes;
            whole.bytes += part->bytes;
            if (whole.nodes > maximumNodes || whole.bytes > maximumExpansion)
                return std::unexpected(Failure::beyondLimits);
        }
        return whole;
    }

    std::string_view list;
    std::uint64_t offsetSize = 0;
    std::uint64_t referenceSize = 0;
    std::uint64_t objects = 0;
    std::uint64_t root = 0;
    std::uint64_t table = 0;
    std::vector<Extent> known;
};

} // namespace

std::optional<Failure> refusal(std::string_view bytes) {
    if (bytes.size() > maximumSize)
        return Failure::beyondLimits;
    if (bytes.starts_with(binaryMagic))
        return BinaryOutline(bytes).refusal();
    return XmlOutline(bytes).refusal();
}

} // namespace tidemark::PropertyList
