#include <linux/qt/QtUserDefaults.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMetaType>
#include <QSettings>
#include <QStandardPaths>
#include <QVariant>

#include <chrono>
#include <optional>

namespace orrivane {

namespace {

// Editors truncate before they write: a file is read only after it has been left alone this long.
constexpr std::chrono::milliseconds settleTime{50};
constexpr qint64 largestFile = 1 << 20; // bytes

std::optional<bool> boolean(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<bool>())
        return value.toBool();
    const auto text = value.toString();
    if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
        return false;
    return std::nullopt;
}

// QSettings reports a malformed file only the first time it parses it and then serves the parts it
// could make out.
bool isWellFormed(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bool continued = false;
    for (const auto& raw : file.read(largestFile).split('\n')) {
        const auto line = raw.trimmed();
        const bool ignored = line.isEmpty() || line.startsWith(';') || line.startsWith('#');
        const bool section = line.startsWith('[') && line.endsWith(']');
        if (line.contains('\0') || !(ignored || section || continued || line.contains('=')))
            return false;
        continued = line.endsWith('\\');
    }
    return true;
}

QString settingsKey(std::string_view key) {
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

} // namespace

QtUserDefaults::QtUserDefaults(const QString& path)
    : path_(path) {
    settle_.setSingleShot(true);
    settle_.setInterval(settleTime);
    QObject::connect(&settle_, &QTimer::timeout, &settle_, [this] { reload(); });
    const auto touched = [this] { settle_.start(); };
    QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &settle_, touched);
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settle_, touched);
    watch();
    stored_ = read();
}

QString QtUserDefaults::standardPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/orrivane/orrivane.conf");
}

void QtUserDefaults::registerDefault(std::string_view key, bool value) {
    registered_.insert_or_assign(std::string(key), value);
}

bool QtUserDefaults::boolForKey(std::string_view key) {
    for (const auto* values : {&stored_, &registered_})
        if (const auto found = values->find(key); found != values->end())
            return found->second;
    return false;
}

void QtUserDefaults::setBool(std::string_view key, bool value) {
    if (QFile::exists(path_) && !isWellFormed(path_))
        QFile::remove(path_);
    QSettings settings(path_, QSettings::IniFormat);
    settings.setValue(settingsKey(key), value);
    settings.sync();
    watch();
    // What others stored meanwhile counts as well, what could not be written all the same.
    auto values = read();
    values.insert_or_assign(std::string(key), value);
    if (values == stored_)
        return;
    stored_ = std::move(values);
    observers_.notify();
}

Subscription QtUserDefaults::onChange(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

QtUserDefaults::Values QtUserDefaults::read() const {
    Values values;
    if (!isWellFormed(path_))
        return values;
    const QSettings settings(path_, QSettings::IniFormat);
    for (const auto& key : settings.allKeys())
        if (const auto value = boolean(settings.value(key)))
            values.emplace(key.toStdString(), *value);
    return values;
}

// The folder shows a file that is replaced as a whole, which ends the watch on the file itself;
// the file shows what is written in place.
void QtUserDefaults::watch() {
    const auto folder = QFileInfo(path_).absolutePath();
    if (!watcher_.directories().contains(folder)) {
        QDir().mkpath(folder);
        if (QFileInfo(folder).isDir())
            watcher_.addPath(folder);
    }
    if (!watcher_.files().contains(path_) && QFileInfo::exists(path_))
        watcher_.addPath(path_);
}

void QtUserDefaults::reload() {
    watch(); // before reading, so that no change falls between
    auto values = read();
    if (values == stored_)
        return;
    stored_ = std::move(values);
    observers_.notify();
}

} // namespace orrivane
