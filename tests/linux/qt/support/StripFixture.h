#pragma once

#include "FakePanelStage.h"
#include "Pictures.h"
#include "Pump.h"

#include <linux/qt/QtTrayPanel.h>
#include <linux/qt/StripWidget.h>

#include <Orrivane/view/View.h>

#include <QApplication>
#include <QMouseEvent>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrivane {

/// A shown panel of cells that write down how they are clicked.
class StripFixture : public ::testing::Test {
  protected:
    static constexpr double barHeight = 37; // points

    FakePanelStage stage;
    QtTrayPanel panel{stage};
    std::vector<std::string> clicks;

    void SetUp() override { panel.create({}); }

    View cell(std::uint32_t key, double width, const std::string& name,
              std::shared_ptr<const PixelImage> picture = nullptr) {
        const Size size{width, barHeight};
        Drawing label{size, {}};
        if (picture)
            label.primitives.emplace_back(
                DrawnImage{{{0, 0}, size}, Image(std::move(picture)), 2, ContentMode::fill});
        View view{key, name, name, Button{}};
        view.node = Button{ButtonStyle::plain,
                           label,
                           {[this, name] { clicks.push_back("left " + name); }},
                           {[this, name] { clicks.push_back("right " + name); }}};
        return view;
    }
    static View row(std::vector<View> cells) {
        View view;
        view.node = HorizontalStack{0, Alignment::center, std::move(cells)};
        return view;
    }
    static double width(const View& root) {
        double total = 0;
        for (const auto& child : std::get<HorizontalStack>(root.node).children)
            total += std::get<Button>(child.node).label.size.width;
        return total;
    }
    /// As the tray does it on every tick; the right edge stays.
    void show(const View& root, double right = 700) {
        panel.setRoot(root);
        panel.setFrame({{right - width(root), 945}, {width(root), barHeight}});
        panel.orderFrontRegardless();
    }

    StripWidget& strip() { return *panel.widget(); }

    void mouse(QEvent::Type type, QPointF position, Qt::MouseButton button) {
        const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
        QMouseEvent event(type, position, strip().mapToGlobal(position), button, held,
                          Qt::NoModifier);
        QApplication::sendEvent(&strip(), &event);
    }
    void press(double x, Qt::MouseButton button = Qt::LeftButton) {
        mouse(QEvent::MouseButtonPress, {x, 10}, button);
    }
    void release(double x, Qt::MouseButton button = Qt::LeftButton) {
        mouse(QEvent::MouseButtonRelease, {x, 10}, button);
    }
    void click(double x, Qt::MouseButton button = Qt::LeftButton) {
        press(x, button);
        release(x, button);
    }
};

using Clicks = std::vector<std::string>;

} // namespace orrivane
