#pragma once

#include "app/base/Observable.h"
#include "app/model/Exclusions.h"

#include <optional>
#include <utility>

namespace tidemark {

/// The running operations. Decides which others may begin, by the table in Exclusions.h. Main
/// thread only.
class Operations {
public:
    /// A running operation; it ends when this is destroyed. `Operations` must outlive it.
    class [[nodiscard]] Token {
    public:
        Token(Token&& other) noexcept
            : operations(std::exchange(other.operations, nullptr)), operation(other.operation) {}
        Token& operator=(Token&& other) noexcept {
            std::swap(operations, other.operations);
            std::swap(operation, other.operation);
            return *this;
        }
        ~Token() {
            if (operations)
                operations->end(operation);
        }

    private:
        friend class Operations;
        Token(Operations& operations, Operation operation)
            : operations(&operations), operation(operation) {}

        Operations* operations;
        Operation operation;
    };

    /// `owner` announces each begin and end as a change, and must outlive this object.
    explicit Operations(Observable& owner) : owner(owner) {}
    Operations(const Operations&) = delete;
    Operations& operator=(const Operations&) = delete;

    /// Begins an operation; absent when a running one excludes it.
    [[nodiscard]] std::optional<Token> begin(Operation operation);
    bool mayBegin(Operation operation) const {
        return !running.intersects(exclusions::of(operation));
    }

    bool isRunning(Operation operation) const { return running.contains(operation); }
    bool isAnyRunning(OperationSet any) const { return running.intersects(any); }
    bool isIdle() const { return running.isEmpty(); }

private:
    void end(Operation operation);

    Observable& owner;
    OperationSet running;
};

} // namespace tidemark
