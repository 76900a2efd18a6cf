#pragma once

#include <linux/qt/view/ScreenView.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QCoreApplication>

namespace orrivane {

inline View text(std::string words) {
    return {.node = Text{.text = std::move(words)}};
}

inline View column(std::vector<View> children) {
    return {.node = VerticalStack{.spacing = 4, .children = std::move(children)}};
}

inline View keyed(std::uint32_t key, std::string title, std::function<void()> action = {}) {
    return {.key = key,
            .node = Button{.style = ButtonStyle::bordered,
                           .action = {std::move(action)},
                           .title = std::move(title)}};
}

/// A screen of its own, on no display.
class ScreenViewTest : public testing::Test {
  protected:
    void show(const View& root) {
        screen.setRoot(root);
        screen.resize(500, 400);
        screen.show();
        QCoreApplication::processEvents();
    }
    template <typename Widget>
    Widget& only() {
        const auto found = screen.findChildren<Widget*>();
        if (found.size() != 1)
            throw std::runtime_error("not exactly one of them");
        return *found.front();
    }
    std::vector<std::string> titles() {
        std::vector<std::pair<int, std::string>> placed;
        for (const auto* button : screen.findChildren<QAbstractButton*>())
            if (button->isVisible())
                placed.emplace_back(button->y(), button->text().toStdString());
        std::ranges::sort(placed);
        std::vector<std::string> result;
        for (auto& [y, title] : placed)
            result.push_back(title);
        return result;
    }

    ScreenView screen;
};

} // namespace orrivane
