#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace orrivane {

/// The settings portal, as good or bad as a test wants it. Serves its own connection until it goes.
class FakePortal : public QDBusVirtualObject {
  public:
    enum class Manner {
        answers,
        isSilent,
        hasNoSuchSetting,
        knowsReadOneOnly, // and wraps the value once
    };

    explicit FakePortal(QDBusConnection connection);
    ~FakePortal() override;

    Manner manner = Manner::answers;
    QVariant value = QVariant::fromValue(0U);
    QStringList questions; ///< the methods that were called

    /// Takes the portal's name; false when somebody has it.
    bool appear();
    void disappear();
    /// Announces `value` as that of a setting.
    bool announce(const QString& nameSpace = "org.freedesktop.appearance",
                  const QString& key = "color-scheme") const;
    /// Lets the oldest question that is still open have its answer.
    bool answerNow();

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    QDBusConnection connection_;
    std::optional<QDBusMessage> open_;
};

} // namespace orrivane
