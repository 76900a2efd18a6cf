#include <tests/support/ScriptedMainWindow.h>
#include <tests/support/ScriptedTrayPanel.h>

#include <variant>

namespace orrivane {

void ScriptedMainWindow::create(const MainWindowConfiguration& windowConfiguration) {
    journal.note("window.create");
    configuration = windowConfiguration;
    currentFrame = frameRect({{}, windowConfiguration.contentSize});
}

void ScriptedMainWindow::setRoot(const View& view) {
    journal.note("window.setRoot");
    root = view;
}

void ScriptedMainWindow::makeKeyAndOrderFront() {
    journal.note("window.makeKeyAndOrderFront");
    visible = true;
}

void ScriptedMainWindow::setFrameTopLeft(Point topLeft) {
    journal.note("window.setFrameTopLeft");
    currentFrame.origin = {topLeft.x, topLeft.y - currentFrame.height()};
}

void ScriptedMainWindow::center() {
    journal.note("window.center");
    if (screenVisibleFrame)
        currentFrame.origin = {screenVisibleFrame->midX() - currentFrame.width() / 2,
                               screenVisibleFrame->midY() - currentFrame.height() / 2};
}

Rect ScriptedMainWindow::contentRect(const Rect& frame) {
    return {{frame.minX(), frame.minY()}, {frame.width(), frame.height() - chromeHeight}};
}

Rect ScriptedMainWindow::frameRect(const Rect& content) {
    return {{content.minX(), content.minY()}, {content.width(), content.height() + chromeHeight}};
}

void ScriptedMainWindow::setFrame(const Rect& frame) {
    journal.note("window.setFrame");
    currentFrame = frame;
    animatedFrames.push_back(frame);
}

std::vector<Button> ScriptedTrayPanel::buttons() const {
    std::vector<Button> row;
    if (!root)
        return row;
    for (const auto& child : std::get<HorizontalStack>(root->node).children)
        row.push_back(std::get<Button>(child.node));
    return row;
}

void ScriptedTrayPanel::click(std::size_t index) const {
    if (const auto action = buttons().at(index).action.run)
        action();
}

void ScriptedTrayPanel::clickSecondary(std::size_t index) const {
    if (const auto action = buttons().at(index).secondaryAction.run)
        action();
}

int ScriptedTrayPanel::windowLevelForKey(int key) {
    journal.note("panel.windowLevelForKey " + std::to_string(key));
    const auto found = levels.find(key);
    return found != levels.end() ? found->second : 0;
}

void ScriptedTrayPanel::create(const TrayPanelConfiguration& panelConfiguration) {
    journal.note("panel.create");
    ++creations;
    configuration = panelConfiguration;
    visible = false;
    frame = {};
}

void ScriptedTrayPanel::setRoot(const View& view) {
    journal.note("panel.setRoot");
    root = view;
}

void ScriptedTrayPanel::setFrame(const Rect& rect) {
    journal.note("panel.setFrame");
    frame = rect;
}

void ScriptedTrayPanel::orderFrontRegardless() {
    journal.note("panel.orderFrontRegardless");
    visible = true;
}

void ScriptedTrayPanel::orderOut() {
    journal.note("panel.orderOut");
    visible = false;
}

} // namespace orrivane
