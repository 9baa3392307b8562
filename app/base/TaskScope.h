#pragma once

#include <QCoroTask>
#include <memory>
#include <stop_token>

namespace tidemark {

/// The coroutines that run on behalf of one object. The object outlives them: it declares its
/// scope as the last member, each of its coroutines takes a `hold` in its first line, and the
/// scope is left only when no hold is left. Main thread only.
///
/// Traps of GCC 12 for whoever writes a coroutine: it destroys the awaited task twice when
/// `co_await` stands in a condition, so let it stand alone or initialise a variable; it copies an
/// awaiter that is no temporary; and what a lambda captured is not kept by the coroutine that the
/// lambda is, so pass arguments, by value.
class TaskScope {
public:
    /// Keeps the scope from ending.
    class Hold {
    public:
        explicit Hold(std::shared_ptr<int> count) : counter(std::move(count)) { ++*counter; }
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
    /// Holds a coroutine that nobody awaits. One that fails is a mistake of the program: logged.
    void start(QCoro::Task<void> task) const;

    /// For the waits and the background work of these coroutines.
    std::stop_token token() const { return source.get_token(); }
    bool isStopping() const { return source.stop_requested(); }
    void requestStop() { source.request_stop(); }
    bool isIdle() const { return *holds == 0; }

    /// Requests the stop and runs the event loop, without input of the user, until all coroutines
    /// have ended. Never from within one of them.
    void drain();

private:
    std::shared_ptr<int> holds = std::make_shared<int>(0);
    std::stop_source source;
};

} // namespace tidemark
