#include <Orrivane/platform/Host.h>

#include <Orrivane/AppDelegate.h>
#include <Orrivane/CommandLine.h>
#include <Orrivane/MenuBarIcon.h>
#include <Orrivane/MoveEngine.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ShellPlatform.h>

#include <linux/SignalWatcher.h>
#include <linux/hosts/ForeignHosts.h>
#include <linux/hosts/RestartLauncher.h>
#include <linux/qt/ColorScheme.h>
#include <linux/qt/GlobalMenuExtents.h>
#include <linux/qt/QtMainLoop.h>
#include <linux/qt/QtMainWindow.h>
#include <linux/qt/QtPopover.h>
#include <linux/qt/QtStatusBar.h>
#include <linux/qt/QtTrayPanel.h>
#include <linux/qt/QtUserDefaults.h>
#include <linux/qt/SleepMonitor.h>
#include <linux/qt/StandardErrorLog.h>
#include <linux/support/AutostartService.h>
#include <linux/support/MenuBarPreferenceStore.h>
#include <linux/support/MenuBarPreferences.h>
#include <linux/support/SpawnLauncher.h>
#include <linux/updater/FeedUpdater.h>
#include <linux/updater/LoadedNetwork.h>
#include <linux/updater/NetworkReleaseSource.h>
#include <linux/updater/UpdateMemory.h>
#include <linux/updater/UpdateWindow.h>
#include <linux/x11/PressWatcher.h>
#include <linux/x11/SessionCheck.h>
#include <linux/x11/SingleInstance.h>
#include <linux/x11/TrayProperties.h>
#include <linux/x11/X11Platform.h>

#include <QApplication>
#include <QDesktopServices>
#include <QSocketNotifier>
#include <QUrl>

#include <cstdlib>
#include <optional>

namespace orrivane {

namespace {

bool openAddress(std::string_view address) {
    const QUrl url(QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size())),
                   QUrl::StrictMode);
    // The system's own panes exist on one system only.
    const bool opensHere = url.scheme() == "http" || url.scheme() == "https";
    return opensHere && QDesktopServices::openUrl(url);
}

bool openPackage(const std::string& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

/// The X11 desktop: the toolkit's loop and panel over the port's own connection.
class X11Host : public Host {
  public:
    X11Host(std::unique_ptr<QApplication> application, std::unique_ptr<x11::Connection> connection)
        : application_(std::move(application))
        , connection_(std::move(connection))
        , x11_(*connection_, loop_, settings())
        , panel_(x11_.stage)
        , readable_(connection_->descriptor(), QSocketNotifier::Read)
        , signals_([] { QCoreApplication::quit(); })
        , instance_(*connection_, loop_)
        , preferences_(MenuBarPreferences::userFile())
        , login_(AutostartService::userFile(),
                 QCoreApplication::applicationFilePath().toStdString())
        , updateMemory_(UpdateMemory::userFile())
        , network_(LoadedNetwork::moduleOfProgram(), std::string(CommandLine::version()), loop_)
        , releases_(UpdateSettings::ofBuild(), PackageFolder::ofUser(), network_, loop_)
        , updater_({loop_, releases_, updateWindow_, updateMemory_, log_},
                   UpdateSettings::ofBuild().running, openPackage)
        , statusBar_([this] { return trayLook(); })
        , presses_(*connection_, loop_)
        , popover_([this](auto pressed) { return presses_.watch(std::move(pressed)); },
                   &MoveEngine::isMoving)
        , platform_{loop_,
                    x11_.screens,
                    x11_.windowList,
                    x11_.ownWindows,
                    x11_.accessibility,
                    x11_.capture,
                    defaults_,
                    x11_.workspace,
                    panel_,
                    log_}
        , shell_{x11_.eventPoster, preferences_, restarter_, login_,
                 updater_,         statusBar_,   popover_,   window_} {
        if (auto* toolkit = application_->nativeInterface<QNativeInterface::QX11Application>())
            x11_.items.addOwnClient(connection_->clientOf(xcb_generate_id(toolkit->connection())));
        x11_.ownWindows.setMainWindow([this] { return window_.isVisible(); });
        QObject::connect(&readable_, &QSocketNotifier::activated, [this] { connection_->drain(); });
        connection_->setQueuedHandler([this] { drainSoon(); });
    }
    X11Host(const X11Host&) = delete;
    X11Host& operator=(const X11Host&) = delete;
    // What still waits, a drag perhaps, lets go of what it holds while that is there, and on this
    // thread: nobody may post from another one any more.
    ~X11Host() override {
        foreignHosts_.reset();
        loop_.close();
    }

    const Platform& platform() override { return platform_; }
    const ShellPlatform& shellPlatform() override { return shell_; }

    Claim claim() override {
        if (instance_.claim([this](x11::InstanceCommand command) { obey(command); }))
            return Claim::made;
        return instance_.tell(x11::InstanceCommand::open) ? Claim::toldTheOther : Claim::unanswered;
    }
    std::optional<std::int32_t> runningElsewhere() override { return instance_.runningElsewhere(); }
    bool quitOther() override { return instance_.tell(x11::InstanceCommand::quit); }

    std::string arrangeLimitation() override {
        if (x11::trayIsAMenuBar(*connection_))
            return {};
        return foreignHosts_->arrangeLimitation().value_or(
            "The tray of this desktop does not let its icons be moved.");
    }
    std::string squeezeLimitation() override {
        if (x11::trayIsAMenuBar(*connection_))
            return {};
        return foreignHosts_->squeezeLimitation().value_or(
            "The tray of this desktop does not read the spacing; it is stored all the same.");
    }
    std::optional<Task<bool>> moveItem(const StatusItemWindow& item, double toX) override {
        return foreignHosts_->move(item, toX);
    }

    int run(ApplicationDelegate& delegate) override {
        delegate_ = &delegate;
        QGuiApplication::setWindowIcon(
            drawnIcon(MenuBarIcon::image(), QColor(0x3d, 0x6f, 0xd8), false));
        delegate.applicationDidFinishLaunching();
        // D-Bus is not needed for the first tray, so it does not hold it up.
        loop_.post([this] {
            watchForSleep();
            colorScheme_ = std::make_unique<ColorScheme>(ColorScheme::sessionBus());
        });
        if (x11_.screens.knowsOnlyTheInset())
            log_.write("Orrivane: this panel has a notch of unknown width; tell where it is with "
                       "orrivane --set-notch X,Y,WIDTH,HEIGHT");
        const int status = QApplication::exec();
        delegate_ = nullptr;
        return status;
    }

  private:
    void obey(x11::InstanceCommand command) {
        if (command == x11::InstanceCommand::quit)
            QCoreApplication::quit();
        else if (delegate_)
            delegate_->applicationShouldHandleReopen(window_.isVisible());
    }

    StatusIconLook trayLook() {
        // A menu bar gives items its whole height and expects figures of half of it.
        constexpr double fillInAMenuBar = 0.55;
        const auto ink = x11::trayInk(*connection_);
        return {ink ? std::optional(QColor::fromRgb(*ink)) : std::nullopt,
                x11::trayIsAMenuBar(*connection_) ? fillInAMenuBar : 1};
    }

    x11::X11Platform::Settings settings() {
        return {application_->devicePixelRatio(),
                x11::CutoutFile::ofUser(),
                {openAddress, [] { QCoreApplication::quit(); }, [this] { window_.activate(); }},
                [this](std::int32_t process, PixelRect band) {
                    return globalMenu_.rightEdge(process, band);
                }};
    }

    // Events that came in beside a reply do not make the descriptor readable again.
    void drainSoon() {
        if (std::exchange(drainPosted_, true))
            return;
        loop_.post([this] {
            drainPosted_ = false;
            connection_->drain();
        });
    }

    void watchForSleep() {
        sleep_ =
            std::make_unique<SleepMonitor>(QDBusConnection::systemBus(), [this](bool goingToSleep) {
                x11_.workspace.machineSleeps(goingToSleep);
            });
    }

    std::unique_ptr<QApplication> application_;
    QtMainLoop loop_;
    std::unique_ptr<x11::Connection> connection_;
    QtUserDefaults defaults_;
    StandardErrorLog log_;
    GlobalMenuExtents globalMenu_;
    x11::X11Platform x11_;
    QtTrayPanel panel_;
    QSocketNotifier readable_;
    SignalWatcher signals_;
    std::unique_ptr<SleepMonitor> sleep_;
    std::unique_ptr<ColorScheme> colorScheme_;
    bool drainPosted_ = false;
    x11::SingleInstance instance_;
    MenuBarPreferenceStore preferences_;
    SpawnLauncher launcher_;
    std::optional<ForeignHosts> foreignHosts_{
        std::in_place,
        ForeignHosts::Parts{*connection_, loop_, x11_.items, x11_.screens, log_,
                            [](const std::string& text) {
                                return QString::fromStdString(text).toLower().toStdString();
                            }},
        MenuBarPreferences::userFile()};
    RestartLauncher restarter_{launcher_, [this] { foreignHosts_->restart(); }};
    AutostartService login_;
    UpdateMemory updateMemory_;
    LoadedNetwork network_;
    NetworkReleaseSource releases_;
    UpdateWindow updateWindow_;
    FeedUpdater updater_;
    QtStatusBar statusBar_;
    x11::PressWatcher presses_;
    QtPopover popover_;
    QtMainWindow window_;
    ApplicationDelegate* delegate_ = nullptr; // while the loop runs
    Platform platform_;
    ShellPlatform shell_;
};

} // namespace

std::unique_ptr<Host> Host::create(int& argc, char** argv, std::string& problem) {
    if (const auto unsuitable = x11::SessionCheck::problemOfEnvironment()) {
        problem = *unsuitable;
        return nullptr;
    }
    auto connection = x11::Connection::open(nullptr, problem);
    if (!connection)
        return nullptr;
    if (x11::SessionCheck::isXwayland(*connection)) {
        problem = x11::SessionCheck::waylandSentence();
        return nullptr;
    }
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    QCoreApplication::setApplicationName("orrivane");
    QGuiApplication::setDesktopFileName("orrivane");
    auto application = std::make_unique<QApplication>(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return std::make_unique<X11Host>(std::move(application), std::move(connection));
}

std::optional<std::string> Host::storeCutout(const Rect& pixels) {
    return x11::CutoutFile::ofUser().write(pixels);
}

} // namespace orrivane
