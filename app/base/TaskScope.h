#pragma once

#include <QCoroTask>
#include <memory>
#include <stop_token>

namespace tidemark {

/// Keeps one object alive until its coroutines have ended. The object declares its scope as the
/// last member, and each of its coroutines takes a `hold` in its first line; the destructor of the
/// scope waits until there are no more holds. Main thread only.
///
/// Traps in coroutines: GCC 12 destroys the awaited task twice when `co_await` is in a condition,
/// so write it alone or to initialise a variable; GCC 12 copies an awaiter that is not a temporary;
/// and a coroutine does not keep the captures of its lambda alive, so pass arguments by value.
class TaskScope {
public:
    /// The destructor of the scope waits while one of these exists.
    class Hold {
    public:
        explicit Hold(std::shared_ptr<int> counter) : counter(std::move(counter)) {
            ++*this->counter;
        }
        Hold(Hold&& other) noexcept = default;
        ~Hold() {
            if (counter)
                --*counter;
        }

    private:
        std::shared_ptr<int> counter;
    };

    TaskScope() = default;
    ~TaskScope() { drain(); }
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    [[nodiscard]] Hold hold() const { return Hold(holds); }
    /// Starts a coroutine that is not awaited. Its exceptions are logged, since they are a fault of
    /// the program.
    void start(QCoro::Task<void> task) const;

    /// The stop token for the waits and the background work of the object's coroutines.
    std::stop_token token() const { return source.get_token(); }
    bool isStopping() const { return source.stop_requested(); }
    void requestStop() { source.request_stop(); }
    bool isIdle() const { return *holds == 0; }

    /// Requests the stop and runs the event loop, without user input, until no `Hold` is left. Must
    /// not be called from a coroutine that has one.
    void drain();

private:
    std::shared_ptr<int> holds = std::make_shared<int>(0);
    std::stop_source source;
};

} // namespace tidemark
