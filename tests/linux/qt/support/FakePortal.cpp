#include "FakePortal.h"

#include <QDBusError>
#include <QDBusVariant>

namespace orrivane {

namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String interface("org.freedesktop.portal.Settings");

QVariant wrapped(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

FakePortal::FakePortal(QDBusConnection connection)
    : connection_(std::move(connection)) {
    connection_.registerVirtualObject(path, this);
}

FakePortal::~FakePortal() {
    disappear();
    connection_.unregisterObject(path);
}

bool FakePortal::appear() {
    return connection_.registerService(service);
}

void FakePortal::disappear() {
    connection_.unregisterService(service);
}

bool FakePortal::announce(const QString& nameSpace, const QString& key) const {
    auto signal = QDBusMessage::createSignal(path, interface, "SettingChanged");
    signal << nameSpace << key << wrapped(value);
    return connection_.send(signal);
}

bool FakePortal::answerNow() {
    return open_ && connection_.send(open_->createReply(wrapped(wrapped(value))));
}

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.interface() != interface ||
        message.arguments() != QVariantList{"org.freedesktop.appearance", "color-scheme"})
        return false;
    questions.push_back(message.member());
    const bool readsOnce = message.member() == "ReadOne";
    if (manner == Manner::isSilent) {
        open_ = open_.value_or(message);
        return true;
    }
    if (manner == Manner::hasNoSuchSetting)
        return connection.send(message.createErrorReply("org.freedesktop.portal.Error.NotFound",
                                                        "Requested setting not found"));
    if (manner == Manner::knowsReadOneOnly && !readsOnce)
        return connection.send(
            message.createErrorReply(QDBusError::UnknownMethod, "No such method"));
    return connection.send(
        message.createReply(readsOnce ? wrapped(value) : wrapped(wrapped(value))));
}

} // namespace orrivane
