#include <desktop/items/StatusItem.h>

#include <desktop/items/Hang.h>
#include <desktop/support/ChoiceLog.h>

#include <QActionGroup>
#include <QDateTime>

namespace orrivane::desktop {

StatusItem::StatusItem(const StatusKind& kind, std::size_t part, TrayWatch& tray,
                       const Theme& theme)
    : kind_(kind)
    , part_(part)
    , tray_(tray)
    , theme_(theme) {
    fillMenu();
    connect(&menu_, &QMenu::aboutToHide, this, [this] {
        if (window_)
            window_->setHighlighted(false);
    });
    connect(&tray_, &TrayWatch::trayChanged, this, &StatusItem::redock);
    clock_.setSingleShot(true);
    clock_.setTimerType(Qt::PreciseTimer);
    connect(&clock_, &QTimer::timeout, this, &StatusItem::step);
    waitForNextStep();
    redock();
}

StatusItem::~StatusItem() = default;

void StatusItem::redock() {
    menu_.close();
    if (window_) {
        // It may be what is telling us.
        window_->disconnect(this);
        window_->hide();
        window_.release()->deleteLater();
    }
    if (tray_.owner() == 0)
        return;
    window_ = std::make_unique<ItemWindow>(kind_, part_, state_, tray_, theme_);
    connect(window_.get(), &ItemWindow::pressed, this, &StatusItem::openMenu);
    connect(window_.get(), &TrayWindow::undocked, window_.get(), &QWidget::hide,
            Qt::QueuedConnection);
    menu_.setNoReplayFor(window_.get());
    window_->dock(tray_);
}

void StatusItem::fillMenu() {
    QActionGroup* radios = nullptr;
    for (const MenuEntry& entry : kind_.parts.at(part_).menu)
        addEntry(entry, radios);
}

void StatusItem::addEntry(const MenuEntry& entry, QActionGroup*& radios) {
    using Type = MenuEntry::Type;
    const auto text = QString::fromStdString(entry.text);
    if (entry.type == Type::separator || entry.type == Type::section) {
        radios = nullptr;
        if (entry.type == Type::section)
            menu_.addSection(text);
        else
            menu_.addSeparator();
        return;
    }
    QAction* action = menu_.addAction(text);
    action->setEnabled(entry.type != Type::label);
    action->setCheckable(entry.type == Type::check || entry.type == Type::radio);
    action->setChecked(entry.on);
    if (entry.on)
        state_.on.insert(entry.text);
    if (entry.type == Type::radio) {
        if (radios == nullptr)
            radios = new QActionGroup(&menu_);
        radios->addAction(action);
    } else {
        radios = nullptr;
    }
    connect(action, &QAction::toggled, this, [this, entry](bool on) {
        if (on)
            state_.on.insert(entry.text);
        else
            state_.on.erase(entry.text);
    });
    connect(action, &QAction::triggered, this, [this, entry] { choose(entry); });
}

void StatusItem::openMenu() {
    if (menu_.isVisible())
        return;
    if (const auto corner = window_->menuCorner()) {
        window_->setHighlighted(true);
        menu_.popup(*corner + QPoint(0, theme_.pixels(3)));
    }
}

void StatusItem::choose(const MenuEntry& entry) {
    logChoice(kind_.id, entry.text);
    switch (entry.type) {
    case MenuEntry::Type::restart:
        state_.steps = 0;
        break;
    case MenuEntry::Type::hang:
        // After the menu has gone.
        QTimer::singleShot(0, this, &hang);
        break;
    case MenuEntry::Type::action:
        state_.on.insert(entry.text);
        break;
    default:
        break;
    }
    if (window_)
        window_->update();
}

void StatusItem::waitForNextStep() {
    if (kind_.rhythm == StatusKind::Rhythm::still)
        return;
    const qint64 period = kind_.rhythm == StatusKind::Rhythm::everySecond ? 1000 : 60'000;
    const qint64 left = period - QDateTime::currentMSecsSinceEpoch() % period;
    clock_.start(static_cast<int>(left));
}

void StatusItem::step() {
    if (kind_.pausedBy.empty() || !state_.isOn(kind_.pausedBy)) {
        ++state_.steps;
        if (window_)
            window_->update();
    }
    waitForNextStep();
}

} // namespace orrivane::desktop
