#include <linux/qt/ColorScheme.h>

#include <linux/qt/RoleColors.h>
#include <linux/qt/SessionBus.h>

#include <QApplication>
#include <QDBusMessage>

namespace orrivane {

namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String interface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearance("org.freedesktop.appearance");
constexpr QLatin1String colorScheme("color-scheme");

constexpr uint preferDark = 1;

// Read wraps the value twice, ReadOne once, and implementations do not agree on either.
std::optional<uint> schemeIn(QVariant value) {
    constexpr int mostWrappings = 4;
    for (int i = 0; i < mostWrappings && value.metaType() == QMetaType::fromType<QDBusVariant>();
         ++i)
        value = value.value<QDBusVariant>().variant();
    if (value.metaType() != QMetaType::fromType<uint>())
        return std::nullopt;
    return value.toUInt();
}

} // namespace

ColorScheme::ColorScheme(const QDBusConnection& bus, std::chrono::milliseconds bound)
    : bus_(bus)
    , bound_(bound) {
    if (!bus_.isConnected())
        return;
    // Unless its name is known, the slot's signature is not, and nothing is connected.
    qRegisterMetaType<QDBusVariant>();
    bus_.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QString, QString, QDBusVariant)));
    portal_ = std::make_unique<QDBusServiceWatcher>(service, bus_,
                                                    QDBusServiceWatcher::WatchForRegistration);
    connect(portal_.get(), &QDBusServiceWatcher::serviceRegistered, this, [this] { ask("Read"); });
    ask("Read");
}

QDBusConnection ColorScheme::sessionBus() {
    return hasSessionBus() ? QDBusConnection::sessionBus() : QDBusConnection(QString());
}

// The portal is usually started by whoever asks first, which can take longer than the bound; its
// appearance on the bus then brings the next question.
void ColorScheme::ask(const char* method) {
    auto question = QDBusMessage::createMethodCall(service, path, interface, QLatin1String(method));
    question << QString(appearance) << QString(colorScheme);
    question_ = std::make_unique<QDBusPendingCallWatcher>(
        bus_.asyncCall(question, static_cast<int>(bound_.count())));
    const bool isFirst = QLatin1String(method) == QLatin1String("Read");
    connect(question_.get(), &QDBusPendingCallWatcher::finished, this,
            [this, isFirst](QDBusPendingCallWatcher* done) { answered(done->reply(), isFirst); });
}

void ColorScheme::answered(const QDBusMessage& reply, bool mayAskAgain) {
    // It is this question's own signal that is being handled.
    question_.release()->deleteLater();
    if (reply.type() == QDBusMessage::ReplyMessage && reply.arguments().size() == 1)
        follow(reply.arguments().front());
    else if (mayAskAgain &&
             reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.UnknownMethod"))
        ask("ReadOne");
}

void ColorScheme::settingChanged(const QString& nameSpace, const QString& key,
                                 const QDBusVariant& value) {
    if (nameSpace == appearance && key == colorScheme)
        follow(QVariant::fromValue(value));
}

void ColorScheme::follow(const QVariant& value) {
    // Of the numbers, those that have no meaning yet are to count as no preference.
    if (const auto scheme = schemeIn(value))
        setDark(*scheme == preferDark);
}

void ColorScheme::setDark(bool dark) {
    if (dark == isOurs_ || (dark && isDark(QApplication::palette())))
        return;
    isOurs_ = dark;
    QApplication::setPalette(dark ? darkPalette() : QPalette());
}

QPalette ColorScheme::darkPalette() {
    const QColor text(0xf2f2f4);
    const QColor faint(0x9c9ca3);
    // Buttons, and from it the shades that bevels, frames and grooves are painted in.
    QPalette palette(QColor(0x3a3a3e), QColor(0x242427));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Base, QColor(0x1b1b1e));
    palette.setColor(QPalette::AlternateBase, QColor(0x29292d));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a3a3e));
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, QColor(0x2b71d6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6aa9ff));
    palette.setColor(QPalette::LinkVisited, QColor(0xc3a1ff));
    const QColor disabled(0x77777d);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabled);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x4a4a50));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, disabled);
    return palette;
}

} // namespace orrivane
