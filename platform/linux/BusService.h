#pragma once

#include "platform/linux/MessageBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>
#include <chrono>
#include <functional>
#include <memory>

namespace tidemark {

/// Follows one service of a message bus through its starts, ends and restarts, asks it questions
/// and receives its signals. Does not block. Main thread only.
///
/// Any process may send signals under any path, and a service may be replaced while a question is
/// on its way. So only signals of the present owner of the name are passed on, and replies that
/// arrive after that owner has gone are dropped.
class BusService final : public QObject {
public:
    enum class WhenMissing {
        /// Wait until somebody else starts the service.
        wait,
        /// Ask the bus once to start it.
        start,
    };
    enum class State {
        /// The bus has not answered yet.
        unknown,
        absent,
        running,
    };
    /// Ends when it is destroyed.
    using Subscription = std::unique_ptr<QObject>;
    using Use = std::function<void(const QDBusMessage& message)>;
    using UseValue = std::function<void(const QVariant& value)>;
    using UseValues = std::function<void(const QVariantMap& values)>;

    /// `didChange` is called from the event loop when it is first known whether the service runs,
    /// whenever it has started, ended or been replaced, and after `startOver`. What was read
    /// from the service before that call is then out of date.
    BusService(const MessageBus& bus, QString name, std::function<void()> didChange,
               WhenMissing whenMissing = WhenMissing::wait);

    State state() const { return now; }
    bool isThere() const { return !uniqueName.isEmpty(); }
    /// The unique name of the running service; empty when there is none.
    const QString& owner() const { return uniqueName; }

    /// Calls a method of the running service; a service is never started by this. `use` is called
    /// with the reply or an error, unless the service has ended or been replaced by then. Does
    /// nothing when there is no service.
    void call(const QString& path, const QString& interface, const QString& method,
              const QVariantList& arguments, const Use& use);
    /// Like `call`, for a method that changes nothing. When the service does not answer within the
    /// time limit of the bus, `startOver` is called. The functions below that read properties do
    /// so, too.
    void ask(const QString& path, const QString& interface, const QString& method,
             const QVariantList& arguments, const Use& use);
    /// `use` is called with an invalid value when the property can't be read.
    void readProperty(const QString& path, const QString& interface, const QString& name,
                      const UseValue& use);
    /// All properties of an interface; `use` is called with none when they can't be read.
    void readProperties(const QString& path, const QString& interface, const UseValues& use);

    /// Calls `didChange` again after a pause, for a service whose answers can't be used at present.
    /// Does nothing while such a pause is running. The pause grows from one call to the next, up to
    /// a minute, while the owner is the same.
    void startOver();

    /// Calls `handle` with each signal of this name that the running service sends from `path`.
    /// With `firstArgument`, only those whose first argument is this text. The subscription ends
    /// with this owner, so it is to be made again when `didChange` is called. Null when there
    /// is no service.
    [[nodiscard]] Subscription subscribe(const QString& path, const QString& interface,
                                         const QString& signal, Use handle,
                                         const QString& firstArgument = {});

    /// Whether a signal `PropertiesChanged` is about one of these properties.
    static bool isAbout(const QDBusMessage& signal, const QStringList& properties);

    // The standard interface of all properties, https://dbus.freedesktop.org/doc.
    static const QString propertiesInterface;
    static const QString propertiesChanged;

private:
    void start(const QDBusConnection& connection, WhenMissing whenMissing);
    void findOwner(WhenMissing whenMissing);
    void askToStart();
    void follow(const QString& newOwner);
    void noteAbsence();

    static constexpr std::chrono::milliseconds firstPause{200};
    static constexpr std::chrono::milliseconds longestPause{60'000};

    /// Keeps the connection, also while it is being made.
    const MessageBus messageBus;
    /// Invalid until connected.
    QDBusConnection bus{QString()};
    const QString name;
    const std::function<void()> didChange;
    QDBusServiceWatcher watcher;
    QString uniqueName;
    State now = State::unknown;
    /// The pause before `startOver` calls `didChange`.
    QTimer pause;
    std::chrono::milliseconds nextPause = firstPause;
};

namespace detail {

/// Receives one signal of a service. Qt connects signals of a bus only to named slots; one that
/// takes the message is called whatever the types of the arguments.
class BusSignalReceiver final : public QObject {
    Q_OBJECT

public:
    explicit BusSignalReceiver(BusService::Use handle) : handle(std::move(handle)) {}

public Q_SLOTS:
    void receive(const QDBusMessage& signal) const {
        // A copy, because the handler may destroy this object.
        const BusService::Use call = handle;
        call(signal);
    }

private:
    BusService::Use handle;
};

} // namespace detail

} // namespace tidemark
