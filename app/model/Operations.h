#pragma once

#include "app/base/Observable.h"
#include "app/model/Exclusions.h"

#include <optional>
#include <utility>

namespace tidemark {

/// The operations that are under way, and the only place that decides which may join them. Main
/// thread only.
class Operations {
public:
    /// An operation that is under way, until this is destroyed. `Operations` outlives it.
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
        Token(Operations& all, Operation begun) : operations(&all), operation(begun) {}

        Operations* operations;
        Operation operation;
    };

    /// `published` announces each beginning and end as a change of it, and outlives this.
    explicit Operations(Observable& published) : owner(published) {}
    Operations(const Operations&) = delete;
    Operations& operator=(const Operations&) = delete;

    /// Begins an operation; absent when one that excludes it is under way.
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
