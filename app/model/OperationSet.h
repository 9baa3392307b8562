#pragma once

#include <cstdint>
#include <utility>

namespace tidemark {

/// The operations of the controller. Each runs at most once at a time.
enum class Operation : std::uint8_t {
    /// From the start of the program until its history has been read.
    opening,
    /// A capture by schedule or by hand, until it is saved.
    capturing,
    /// Like `capturing`, started by the user while the folder manager is open.
    capturingInSetup,
    /// The journal is being saved without a capture.
    saving,
    /// Installations are being read from the system's log, and saved if there are new ones.
    importing,
    /// The user names a snapshot: from its capture until it is saved or dropped.
    naming,
    /// During `naming`: the capture.
    drafting,
    /// During `naming`: the draft is being saved under its name.
    savingDraft,
    /// The folder manager is shown because the user has to choose.
    choosingFolders,
    /// The user changes the folders.
    managingFolders,
    /// A check of which recommended folders can be read.
    checkingFolders,
    /// Like `checkingFolders`, after the user returned from the system's settings; then the folder
    /// manager is shown.
    checkingAfterReturn,
    /// Recording is being paused or resumed. Ends within the same call.
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
