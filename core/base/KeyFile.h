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
/// in the syntax of XDG desktop entries, systemd.syntax(7) and Flatpak's metadata. Lines that begin
/// with "#" or ";" are comments. A key may occur again in a group, and a group again in a
/// file; both stay in the order of the file. Other lines, and keys before the first group, are
/// skipped. A key and its value are trimmed.
class KeyFile {
public:
    /// Larger files are not read. Usual files with all their translations have less than a tenth of
    /// this.
    static constexpr std::size_t maximumSize = std::size_t{1} << 20;

    enum class Continuation {
        /// A "\" at the end of a line belongs to the value, as in desktop entries.
        none,
        /// A "\" at the end of a line joins it by a space with the next line that is not a comment,
        /// as in units of systemd.
        backslash,
    };

    enum class Failure {
        tooLarge,
        /// The file has a NUL byte, or a line that begins with "[" and either does not end with "]"
        /// or is not valid UTF-8.
        malformed,
    };

    /// Views into the file, valid while the `KeyFile` exists.
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
    /// All entries, in the order of the file.
    const std::vector<Entry>& entries() const { return all; }
    /// The text of the last entry of a key, which takes effect where a key has one value; absent
    /// when there is none.
    std::optional<std::string> value(std::string_view group, std::string_view key) const;
    /// The texts of all entries of a key, in order.
    std::vector<std::string> values(std::string_view group, std::string_view key) const;

    /// A value of a desktop entry or of Flatpak's metadata with its escapes "\s", "\n",
    /// "\t", "\r" and "\\" replaced by the characters that they mean. A backslash before any other
    /// character stays.
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
