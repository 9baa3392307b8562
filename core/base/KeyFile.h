#pragma once

#include <cstddef>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A text file of groups and keys,
///
///     [Group]
///     Key=value
///
/// as Desktop Entries of the XDG, systemd.syntax(7) and Flatpak's metadata have it. Lines
/// that begin with "#" or ";" are comments. A key may occur again in a group, and a group again in
/// a file; both stay in the order of the file. What is no group, no key and no comment is skipped,
/// and so are keys before the first group. A key and its value are trimmed.
class KeyFile {
public:
    /// A larger file is not read. Honest ones with all their translations stay below a tenth.
    static constexpr std::size_t maximumSize = std::size_t{1} << 20;

    enum class Continuation {
        /// A "\" at the end of a line is a part of the value: desktop entries.
        none,
        /// It joins the line with the next one that is no comment, by a space: units of systemd.
        backslash,
    };

    enum class Failure {
        tooLarge,
        /// A NUL byte, or a line that begins like a group and does not end like one or is not
        /// UTF-8.
        malformed,
    };

    /// Views into the file, valid as long as it is.
    struct Entry {
        std::string_view group;
        std::string_view key;
        /// The bytes in the file, with escapes, in any encoding.
        std::string_view bytes;

        /// The value as records keep text: valid UTF-8, by `textFromBytes`.
        std::string text() const;
    };

    static std::expected<KeyFile, Failure> parse(std::string bytes, Continuation continuation);

    bool hasGroup(std::string_view group) const;
    /// All of them, in the order of the file.
    const std::vector<Entry>& entries() const { return all; }
    /// The text of the last entry of a key, which is the one that holds where a key may stand
    /// once; absent when there is none.
    std::optional<std::string> value(std::string_view group, std::string_view key) const;
    /// The texts of all entries of a key, in order.
    std::vector<std::string> values(std::string_view group, std::string_view key) const;

    /// A value of a desktop entry or of Flatpak's metadata with its escapes "\s", "\n", "\t", "\r"
    /// and "\\" replaced by what they stand for. Other pairs stay as they are.
    static std::string unescaped(std::string_view value);

private:
    explicit KeyFile(std::string bytes);
    std::expected<void, Failure> readLine(std::string_view line);

    /// On the heap, so that a move leaves the views valid.
    std::unique_ptr<const std::string> content;
    std::vector<std::string_view> groups;
    std::vector<Entry> all;
};

} // namespace tidemark
