#include <desktop/windows/AppMenuPublisher.h>

#include <desktop/support/XServer.h>

#include <QCoreApplication>
#include <QWidget>

namespace orrivane::desktop {

namespace {

constexpr int applicationMenu = -1;

std::string published(const std::vector<PublishedMenu>& menus) {
    std::string text;
    for (const PublishedMenu& menu : menus) {
        if (!text.empty())
            text += '\n';
        text += menu.title;
        for (const std::string& entry : menu.entries)
            text += '\t' + entry;
    }
    return text;
}

} // namespace

AppMenuPublisher::AppMenuPublisher(QWidget& window, std::string application,
                                   std::vector<PublishedMenu> menus)
    : QObject(&window)
    , window_(static_cast<xcb_window_t>(window.winId()))
    , choice_(xserver::atom("_ORRIVANE_APP_MENU_CHOICE"))
    , application_(std::move(application))
    , menus_(std::move(menus)) {
    xserver::setText(window_, "_ORRIVANE_APP_MENUS", xserver::atom("UTF8_STRING"),
                     published(menus_));
    QCoreApplication::instance()->installNativeEventFilter(this);
}

AppMenuPublisher::~AppMenuPublisher() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool AppMenuPublisher::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_client_message_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE || event->window != window_ ||
        event->type != choice_ || event->format != 32)
        return false;
    take(static_cast<int>(event->data.data32[0]), static_cast<int>(event->data.data32[1]));
    return true;
}

void AppMenuPublisher::take(int menu, int entry) {
    if (menu == applicationMenu && entry == 0) {
        const auto name = QString::fromStdString(application_);
        emit quitChosen(name, QStringLiteral("Quit ") + name);
        return;
    }
    if (menu < 0 || static_cast<std::size_t>(menu) >= menus_.size() || entry < 0)
        return;
    const PublishedMenu& opened = menus_[static_cast<std::size_t>(menu)];
    const auto place = static_cast<std::size_t>(entry);
    if (place < opened.entries.size() && opened.entries[place] != "-")
        emit chosen(QString::fromStdString(opened.title),
                    QString::fromStdString(opened.entries[place]));
}

} // namespace orrivane::desktop
