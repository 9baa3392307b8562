#pragma once

#include <chrono>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <type_traits>

namespace tidemark {

/// Runs calls that access folders with a time limit, since a dead network volume may never respond.
/// Each call runs on a thread of its own, which is abandoned when the call takes too long, so a
/// call must own everything that it uses. Copies share their state. Thread-safe.
class FolderCalls {
public:
    explicit FolderCalls(std::chrono::milliseconds longest = std::chrono::seconds(30));

    /// Returns or throws the result of `call`. Absent when the call takes too long or a stop is
    /// requested before it ends. Throws `Error` when no thread can be started. While an abandoned
    /// call for the same folder is still running, `call` is not started and the result is absent at
    /// once. When an abandoned call returns a result, `late` is called with it on the thread of
    /// that call.
    template <class Call, class Result = std::invoke_result_t<Call&>>
    std::optional<Result>
    answer(const std::filesystem::path& folder, Call call, const std::stop_token& stop,
           std::function<void(const std::type_identity_t<Result>&)> late = {}) const {
        struct Answer {
            std::optional<Result> result;
            std::exception_ptr failure;
        };
        const auto answer = std::make_shared<Answer>();
        const auto work = [answer, call = std::move(call)] {
            try {
                answer->result.emplace(call());
            } catch (...) {
                answer->failure = std::current_exception();
            }
        };
        const auto whenLate = [answer, late = std::move(late)] {
            if (late && answer->result)
                late(*answer->result);
        };
        if (!endsInTime(folder, work, whenLate, stop))
            return std::nullopt;
        if (answer->failure)
            std::rethrow_exception(answer->failure);
        return std::move(answer->result);
    }

private:
    struct State;

    bool endsInTime(const std::filesystem::path& folder, std::function<void()> work,
                    std::function<void()> whenLate, const std::stop_token& stop) const;

    std::chrono::milliseconds longest;
    std::shared_ptr<State> state;
};

} // namespace tidemark
