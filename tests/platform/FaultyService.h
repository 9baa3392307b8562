#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <functional>
#include <map>
#include <vector>

namespace tidemark::test {

/// A service on a bus that answers from a table, and can answer badly. Each has a connection of its
/// own, so that one can still reply when another one has taken over its name.
class FaultyService final : public QDBusVirtualObject {
public:
    enum class Way {
        answer,
        twice,
        /// Holds all replies back until `release`.
        late,
        fail,
        /// Replies with a number, whatever was asked.
        nonsense,
        /// Answers the first call by the error that a caller without an answer gets after some time
        /// (here at once), and the next ones as it should.
        silentOnce,
        failOnce,
    };
    /// The arguments of replies, by the method and its text arguments, such as
    /// "GetAll net.hadess.PowerProfiles". Other calls fail.
    using Answers = std::map<QString, QVariantList>;

    FaultyService(QDBusConnection home, QString service)
        : bus(std::move(home)), name(std::move(service)) {
        bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    }
    ~FaultyService() override {
        stop();
        bus.unregisterObject(QStringLiteral("/"));
    }

    void send(const QDBusMessage& signal) const { bus.send(signal); }
    void start() { bus.registerService(name); }
    void stop() { bus.unregisterService(name); }
    void release() {
        for (const auto& reply : std::exchange(held, {}))
            bus.send(reply);
    }

    Way way = Way::answer;
    Answers answers;
    /// Called after each reply.
    std::function<void(const QDBusMessage& call)> afterReply = [](const auto&) {};
    int calls = 0;

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection&) override {
        ++calls;
        if (way == Way::late)
            held.push_back(replyTo(call));
        else
            bus.send(replyTo(call));
        if (way == Way::twice)
            bus.send(replyTo(call));
        if (way == Way::silentOnce || way == Way::failOnce)
            way = Way::answer;
        afterReply(call);
        return true;
    }

private:
    QDBusMessage replyTo(const QDBusMessage& call) const {
        QString question = call.member();
        for (const auto& argument : call.arguments())
            if (argument.metaType() == QMetaType::fromType<QString>())
                question += ' ' + argument.toString();
        const auto answer = answers.find(question);
        if (way == Way::nonsense)
            return call.createReply(QVariant(42));
        if (way == Way::silentOnce)
            return call.createErrorReply(QDBusError::NoReply, question);
        if (way == Way::fail || way == Way::failOnce || answer == answers.end())
            return call.createErrorReply(QDBusError::InvalidArgs, question);
        return call.createReply(answer->second);
    }

    QDBusConnection bus;
    const QString name;
    std::vector<QDBusMessage> held;
};

} // namespace tidemark::test
