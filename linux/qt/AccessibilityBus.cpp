#include <linux/qt/AccessibilityBus.h>

#include <linux/qt/SessionBus.h>

#include <QDBusPendingCall>

#include <algorithm>

namespace orrivane {

namespace {

constexpr QLatin1String service("org.a11y.Bus");

bool saysThatNobodyIsThere(const QDBusMessage& reply) {
    const auto name = reply.errorName();
    return name == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner") ||
           name == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown");
}

// A bus call with no time left still needs a positive time-out.
int remaining(const QDeadlineTimer& deadline) {
    return static_cast<int>(std::clamp<qint64>(deadline.remainingTime(), 1, 10'000));
}

QString uniqueName() {
    static int count = 0;
    return QStringLiteral("orrivane-accessibility-%1").arg(++count);
}

} // namespace

AccessibilityBus::AccessibilityBus(std::optional<QDBusConnection> session)
    : session_(std::move(session))
    , name_(uniqueName()) {}

AccessibilityBus::~AccessibilityBus() {
    disconnect();
}

bool AccessibilityBus::connect(const QDeadlineTimer& deadline) {
    unanswered_ = false;
    if (bus_ && bus_->isConnected())
        return true;
    disconnect();
    const auto where = address(deadline);
    if (!where.startsWith(QLatin1String("unix:")))
        return false;
    // As a peer, because connecting to a bus would wait for its greeting without a bound.
    bus_ = QDBusConnection::connectToPeer(where, name_);
    const auto greeting = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("Hello"));
    if (bus_->isConnected() &&
        call({greeting}, deadline).front().type() == QDBusMessage::ReplyMessage)
        return true;
    disconnect();
    return false;
}

std::vector<QDBusMessage> AccessibilityBus::call(const std::vector<QDBusMessage>& calls,
                                                 const QDeadlineTimer& deadline) {
    std::vector<QDBusPendingCall> pending;
    pending.reserve(calls.size());
    for (const auto& each : calls)
        pending.push_back(bus_->asyncCall(each, remaining(deadline)));
    std::vector<QDBusMessage> replies;
    replies.reserve(calls.size());
    for (auto& each : pending) {
        each.waitForFinished();
        replies.push_back(each.reply());
        noteSilence(replies.back());
    }
    return replies;
}

QDBusConnection& AccessibilityBus::session() {
    if (!session_)
        session_ = QDBusConnection::sessionBus();
    if (!watcher_) {
        watcher_ = std::make_unique<QDBusServiceWatcher>(service, *session_,
                                                         QDBusServiceWatcher::WatchForOwnerChange);
        QObject::connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged,
                         [this] { isAbsent_ = false; });
    }
    return *session_;
}

QString AccessibilityBus::address(const QDeadlineTimer& deadline) {
    if (isAbsent_ || (!session_ && !hasSessionBus()))
        return {};
    auto question = QDBusMessage::createMethodCall(service, QStringLiteral("/org/a11y/bus"),
                                                   QStringLiteral("org.a11y.Bus"),
                                                   QStringLiteral("GetAddress"));
    question.setAutoStartService(false);
    const auto reply = session().call(question, QDBus::Block, remaining(deadline));
    noteSilence(reply);
    isAbsent_ = saysThatNobodyIsThere(reply);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("s"))
        return {};
    return reply.arguments().front().toString();
}

void AccessibilityBus::noteSilence(const QDBusMessage& reply) {
    if (reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply"))
        unanswered_ = true;
}

void AccessibilityBus::disconnect() {
    if (!bus_)
        return;
    bus_.reset();
    QDBusConnection::disconnectFromPeer(name_);
}

} // namespace orrivane
