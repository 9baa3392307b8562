#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// What is read of a copied item. It is a file if that can be read, else a text, with the same text
/// in rich form if there is one, else an image.
enum class ClipPart { file, text, richText, image };

/// The content of a copied item under one of its types.
struct ClipData {
    /// As the system names it, such as "text/plain".
    std::string type;
    std::string bytes;
    /// False when there is more than was read.
    bool isComplete = true;

    bool operator==(const ClipData&) const = default;
};

/// A part that could not be read is present without bytes.
using ClipContents = std::map<ClipPart, ClipData>;

/// The types under which an item is offered, as the system names them.
using ClipTypeNames = std::vector<std::string>;

/// An application, with the identifier by which `memoryExcludedApps` lists it.
struct ClipApplication {
    std::string id;
    /// As people read it; the identifier where it has none.
    std::string name;

    bool operator==(const ClipApplication&) const = default;
};

/// Which application copied an item, as far as the system reports it.
struct ClipOrigin {
    /// The application that the clipboard itself names.
    std::optional<ClipApplication> writer;
    /// The application in front when the item was copied.
    std::optional<ClipApplication> frontmost;

    /// The writer, or else the application in front.
    const std::optional<ClipApplication>& source() const { return writer ? writer : frontmost; }

    bool operator==(const ClipOrigin&) const = default;
};

/// An item that was copied to the clipboard.
struct CopiedItem {
    ClipContents contents;
    ClipOrigin origin;
};

} // namespace tidemark
