#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QPalette>

#include <chrono>
#include <memory>
#include <optional>

namespace orrivane {

/// Keeps the application's palette light or dark as the desktop's settings portal says.
/// Without a bus, a portal or an answer that makes sense the toolkit's own palette stays, as it
/// does where that is dark by itself.
class ColorScheme : public QObject {
    Q_OBJECT

  public:
    /// `bus` is the session bus, connected or not. An answer that takes longer than `bound` counts
    /// for nothing; a portal that starts later is asked again. The palette changes on this thread,
    /// never in here, and outlives this object.
    explicit ColorScheme(const QDBusConnection& bus,
                         std::chrono::milliseconds bound = std::chrono::seconds(5));

    /// The user's session bus. Not connected where there is none: the bus library would start one.
    static QDBusConnection sessionBus();

    /// What is shown on a dark desktop: every text stands 4.5 to 1 or more off its ground.
    static QPalette darkPalette();

    /// Whether an answer of the portal is being waited for.
    [[nodiscard]] bool isAsking() const { return question_ != nullptr; }

  private slots:
    void settingChanged(const QString& nameSpace, const QString& key, const QDBusVariant& value);

  private:
    void ask(const char* method);
    void answered(const QDBusMessage& reply, bool mayAskAgain);
    void follow(const QVariant& value);
    void setDark(bool dark);

    QDBusConnection bus_;
    std::chrono::milliseconds bound_;
    std::unique_ptr<QDBusServiceWatcher> portal_;
    std::unique_ptr<QDBusPendingCallWatcher> question_; // the last one
    bool isOurs_ = false;                               // the palette
};

} // namespace orrivane
