#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

namespace orrivane::desktop {

/// Tells the desktop's programs whether it is light or dark, in the way they ask any desktop:
/// org.freedesktop.portal.Settings, with the one setting color-scheme.
class SettingsPortal final : public QDBusVirtualObject {
  public:
    explicit SettingsPortal(bool dark);
    ~SettingsPortal() override;

    /// Takes the portal's name on `session`. False, with a sentence in `problem`: another program
    /// has it. True without a bus too: then nobody can ask.
    bool offer(const QDBusConnection& session, QString& problem);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage propertyFor(const QDBusMessage& message) const;
    [[nodiscard]] QVariant settingsIn(const QStringList& nameSpaces) const;

    uint scheme_; // 1 dark, 2 light
    QDBusConnection session_;
};

} // namespace orrivane::desktop
