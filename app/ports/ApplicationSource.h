#pragma once

#include "core/base/Date.h"

#include <functional>
#include <string>
#include <string_view>

namespace tidemark {

/// Reports when applications with a window of their own are launched and quit, but not programs in
/// the background. Main thread only.
class ApplicationSource {
public:
    /// The identifier of this program as an application.
    static constexpr std::string_view ownIdentifier = "app.tidemark";

    struct Application {
        /// The identifier that the system knows it by.
        std::string id;
        /// The name that the user sees; may be empty.
        std::string name;
        /// The path of the application or its program.
        std::string path;

        bool operator==(const Application&) const = default;
    };
    struct Change {
        enum class Kind { launched, closed };

        Kind kind;
        Application application;
        Date moment;
    };
    using Report = std::function<void(Change)>;

    virtual ~ApplicationSource() = default;

    /// Starts to follow. Applications that run already are not reported as launched. May be called
    /// once, and again after `stop`.
    virtual void start(Report report) = 0;
    /// `report` is not called any more.
    virtual void stop() = 0;
};

} // namespace tidemark
