#pragma once

#include <Orrivane/platform/UserDefaults.h>
#include <Orrivane/support/ObserverList.h>

#include <QFileSystemWatcher>
#include <QString>
#include <QTimer>

#include <map>
#include <string>

namespace orrivane {

/// Booleans in an INI file that other programs and the user may edit while this one runs. A value
/// that is neither "true" nor "false" counts as absent, a file that is no INI file as empty.
class QtUserDefaults : public UserDefaults {
  public:
    explicit QtUserDefaults(const QString& path = standardPath());

    /// orrivane/orrivane.conf in the user's configuration folder.
    static QString standardPath();

    void registerDefault(std::string_view key, bool value) override;
    [[nodiscard]] bool boolForKey(std::string_view key) override;
    /// On disk when it returns; where the file cannot be written the value lives as long as this.
    void setBool(std::string_view key, bool value) override;
    Subscription onChange(std::function<void()> changed) override;

  private:
    using Values = std::map<std::string, bool, std::less<>>;

    [[nodiscard]] Values read() const;
    void watch();
    void reload();

    QString path_;
    Values registered_;
    Values stored_;
    ObserverList<> observers_;
    QFileSystemWatcher watcher_;
    QTimer settle_;
};

} // namespace orrivane
