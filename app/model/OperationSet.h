#pragma once

#include <cstdint>
#include <utility>

namespace tidemark {

/// What may be under way in the controller. Each is at most once.
enum class Operation : std::uint8_t {
    /// From the start of the program until its history has been read.
    opening,
    /// A capture by schedule or by hand, until it is saved.
    capturing,
    /// As `capturing`, of a user who has the folder manager open.
    capturingInSetup,
    /// The journal is being saved apart from a capture.
    saving,
    /// The records that the system keeps of installations are being read, and saved if need be.
    importing,
    /// The user names a snapshot: from the fresh capture until it is saved or given up.
    naming,
    /// Within `naming`: the fresh capture.
    drafting,
    /// Within `naming`: the draft is being saved under its name.
    savingDraft,
    /// The folder manager is shown because the user has to choose.
    choosingFolders,
    /// The user changes the folders.
    managingFolders,
    /// It is being checked which of the recommended folders can be read.
    checkingFolders,
    /// As `checkingFolders`, for a user who is back from the system's own settings; then the folder
    /// manager is shown.
    checkingAfterReturn,
    /// Recording is being paused or resumed; ends within the same call.
    switchingRecording,
};

/// A set of operations.
class OperationSet {
public:
    constexpr OperationSet() = default;
    template <class... More>
    constexpr OperationSet(Operation first, More... more) : bits((bit(first) | ... | bit(more))) {}

    static constexpr OperationSet all() { return OperationSet(~std::uint32_t{0}); }

    constexpr bool contains(Operation operation) const { return (bits & bit(operation)) != 0; }
    constexpr bool intersects(OperationSet other) const { return (bits & other.bits) != 0; }
    constexpr bool isEmpty() const { return bits == 0; }
    constexpr OperationSet with(OperationSet more) const { return OperationSet(bits | more.bits); }
    constexpr OperationSet without(OperationSet less) const {
        return OperationSet(bits & ~less.bits);
    }

    constexpr bool operator==(const OperationSet&) const = default;

private:
    explicit constexpr OperationSet(std::uint32_t set) : bits(set) {}
    static constexpr std::uint32_t bit(Operation operation) {
        return std::uint32_t{1} << std::to_underlying(operation);
    }

    std::uint32_t bits = 0;
};

} // namespace tidemark
