#include "platform/linux/KdeShortcut.h"

#include "platform/linux/KeyNames.h"
#include "platform/linux/PortalShortcut.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <algorithm>
#include <utility>

namespace tidemark {

using namespace Qt::StringLiterals;

namespace {

const QString acceleratorService = u"org.kde.kglobalaccel"_s;
const QString acceleratorPath = u"/kglobalaccel"_s;
const QString acceleratorInterface = u"org.kde.KGlobalAccel"_s;
const QString componentInterface = u"org.kde.kglobalaccel.Component"_s;
const QString ownComponent = u"app.tidemark"_s;
const QString ownAction = u"search"_s;
/// The identifiers of the component and the action, then their names as the user sees them.
const QStringList action{ownComponent, ownAction, u"Tidemark"_s, u"Search History"_s};

/// Qt's codes of Control, Shift and the space bar.
constexpr int controlShiftSpace = 0x0400'0000 | 0x0200'0000 | 0x20;
/// KGlobalAccel's flag SetPresent: the keys are active. Since its flag NoAutoloading is not given,
/// keys that the user has chosen before are used instead of those in the call.
constexpr quint32 present = 2;

} // namespace

KdeShortcut::KdeShortcut(const MessageBus& session, Observer observer)
    : observer(std::move(observer)),
      accelerators(session, acceleratorService, [this] { follow(); }) {
    qDBusRegisterMetaType<KeySequence>();
    qDBusRegisterMetaType<QList<KeySequence>>();
}

KdeShortcut::~KdeShortcut() {
    // Otherwise the keys stay assigned to this program after its end, and no other can use them.
    accelerators.call(acceleratorPath, acceleratorInterface, u"setInactive"_s, {action},
                      [](const auto&) {});
}

void KdeShortcut::follow() {
    pressed.reset();
    changed.reset();
    if (!isOffered())
        return report({.obstacle = std::string(PortalShortcut::notOffered)});
    changed = accelerators.subscribe(
        acceleratorPath, acceleratorInterface, u"yourShortcutsChanged"_s,
        [this](const QDBusMessage& signal) {
            if (signal.arguments().value(0).toStringList().mid(0, 2) == action.mid(0, 2))
                take(qdbus_cast<QList<KeySequence>>(signal.arguments().value(1)));
        });
    accelerators.call(acceleratorPath, acceleratorInterface, u"doRegister"_s, {action},
                      [](const auto&) {});
    assign();
}

void KdeShortcut::assign() {
    const QList<KeySequence> wanted{{{controlShiftSpace, 0, 0, 0}}};
    accelerators.call(acceleratorPath, acceleratorInterface, u"setShortcutKeys"_s,
                      {action, QVariant::fromValue(wanted), present},
                      [this](const QDBusMessage& reply) {
                          take(qdbus_cast<QList<KeySequence>>(reply.arguments().value(0)));
                      });
}

/// Takes over the keys that KDE has assigned, which the user may have chosen in its settings.
/// Called after the registration and after each change.
void KdeShortcut::take(const QList<KeySequence>& assigned) {
    const auto first = std::ranges::find_if(assigned, &KeySequence::isAny);
    if (first == assigned.end())
        return report({.obstacle = std::string(PortalShortcut::refused)});
    const int combination = first->keys.first();
    keys = combination == controlShiftSpace ? std::string() : keyName(combination);
    listen();
}

void KdeShortcut::listen() {
    accelerators.call(acceleratorPath, acceleratorInterface, u"getComponent"_s, {ownComponent},
                      [this](const QDBusMessage& reply) {
                          const auto component =
                              reply.arguments().value(0).value<QDBusObjectPath>().path();
                          if (component.isEmpty())
                              return report({.obstacle = std::string(PortalShortcut::refused)});
                          pressed = accelerators.subscribe(
                              component, componentInterface, u"globalShortcutPressed"_s,
                              [this](const QDBusMessage& signal) {
                                  if (signal.arguments().value(1).toString() == ownAction)
                                      observer.pressed();
                              });
                          report({.isAvailable = true, .keys = keys});
                      });
}

void KdeShortcut::report(const Availability& availability) {
    if (std::exchange(last, availability) != availability)
        observer.availabilityChanged(availability);
}

} // namespace tidemark
