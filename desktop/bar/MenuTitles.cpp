#include <desktop/bar/MenuTitles.h>

#include <desktop/bar/FrontApplication.h>

#include <algorithm>

#include <QMenu>
#include <QStyleOptionMenuItem>

namespace orrivane::desktop {

namespace {

QString withoutMnemonics(const std::string& text) {
    return QString::fromStdString(text).replace('&', QLatin1String("&&"));
}

} // namespace

MenuTitles::MenuTitles(const Theme& theme, QWidget* parent)
    : QMenuBar(parent)
    , titleStyle_(std::make_unique<MenuTitleStyle>(theme)) {
    setNativeMenuBar(false);
    setAttribute(Qt::WA_NativeWindow);
    setStyle(titleStyle_.get());
    setFont(theme.font(13));
    setAccessibleName(tr("Menu bar"));
}

MenuTitles::~MenuTitles() {
    setStyle(nullptr);
}

void MenuTitles::showMenus(const std::string& name, const std::vector<std::string>& nameEntries,
                           const std::vector<AppMenu>& menus) {
    clear();
    // One of them may be asking for this from a choice in it.
    for (auto* menu : std::exchange(menus_, {})) {
        menu->hide();
        menu->deleteLater();
    }
    append(FrontApplication::nameMenu, {name, nameEntries});
    for (std::size_t i = 0; i < menus.size(); ++i)
        append(static_cast<int>(i), menus[i]);
}

void MenuTitles::append(int number, const AppMenu& content) {
    auto* menu = new QMenu(withoutMnemonics(content.title), this);
    for (std::size_t i = 0; i < content.entries.size(); ++i) {
        const auto& text = content.entries[i];
        if (text == AppMenu::separator) {
            menu->addSeparator();
            continue;
        }
        auto* entry = menu->addAction(withoutMnemonics(text));
        entry->setMenuRole(QAction::NoRole);
        connect(entry, &QAction::triggered, this,
                [this, number, i] { emit chosen(number, static_cast<int>(i)); });
    }
    addMenu(menu);
    menus_.push_back(menu);
}

void MenuTitles::setPlace(int left, int limit, int height) {
    setFixedHeight(height);
    setVisible(limit > left);
    setGeometry(left, 0, std::clamp(sizeHint().width(), 1, std::max(1, limit - left)), height);
    raise();
}

void MenuTitles::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenuBar::initStyleOption(option, action);
    if (!actions().isEmpty() && action == actions().constFirst()) {
        option->font.setWeight(QFont::Bold);
        option->fontMetrics = QFontMetrics(option->font);
    }
}

} // namespace orrivane::desktop
