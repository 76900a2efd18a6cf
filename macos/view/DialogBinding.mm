#import <macos/view/Bindings.h>

#import <macos/view/RunAction.h>
#import <macos/view/ScreenView.h>

#include <algorithm>
#include <optional>

namespace orrivane {

namespace {

struct Question {
    NSAlert* alert = nil;
    NSWindow* parent = nil; // of a sheet
    bool abandoned = false; // nobody wants the answer any more
};

NSAlert* makeAlert(const ConfirmationDialog& dialog) {
    NSAlert* alert = [[NSAlert alloc] init];
    alert.messageText = toNSString(dialog.title);
    alert.informativeText = toNSString(dialog.message);
    // Else the program could neither be quit nor let a log-out pass without an answer.
    alert.window.preventsApplicationTerminationWhenModal = NO;
    for (const auto& each : dialog.buttons) {
        NSButton* button = [alert addButtonWithTitle:toNSString(each.title)];
        if (each.role == DialogButtonRole::cancel)
            button.keyEquivalent = @"\x1b";
    }
    return alert;
}

// The loop of a modal alert looks at its end only with the next event.
void endModal() {
    [NSApp stopModalWithCode:NSModalResponseAbort];
    [NSApp postEvent:[NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:0
                                         context:nil
                                         subtype:0
                                           data1:0
                                           data2:0]
             atStart:YES];
}

/// A question: a sheet of the screen's window, or an alert of its own, because a sheet would make
/// a popover close.
class DialogBinding : public Binding {
  public:
    explicit DialogBinding(const View& first)
        : Binding(first, [[ORVFlippedView alloc] initWithFrame:NSZeroRect]) {}
    ~DialogBinding() override { close(); }

    void collectKeyViews(std::vector<NSView*>&) const override {}

  protected:
    bool isLaidOut() const override { return false; }
    CGSize measureContent(CGFloat) override { return CGSizeZero; }
    void apply(const View& next) override {
        node_ = std::get<ConfirmationDialog>(next.node);
        if (node_.isPresented && !question_)
            open();
        else if (!node_.isPresented)
            close();
    }

  private:
    [[nodiscard]] bool isInWindow() const {
        for (NSView* view = inner(); view; view = view.superview)
            if ([view isKindOfClass:ORVScreenView.class])
                return static_cast<ORVScreenView*>(view).inWindow != 0 && view.window.visible;
        return false;
    }

    // From a timer: a modal loop that began on the main queue would hold that queue up.
    void open() {
        question_ = std::make_shared<Question>(Question{.alert = makeAlert(node_)});
        const std::weak_ptr<Question> asked = question_;
        NSTimer* timer = [NSTimer timerWithTimeInterval:0
                                                repeats:NO
                                                  block:^(NSTimer*) {
                                                    if (const auto question = asked.lock())
                                                        present(question);
                                                  }];
        [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
    }

    // By value: a block keeps what it is given, but not what a reference stands for.
    void present(std::shared_ptr<Question> question) {
        if (!isInWindow()) {
            [NSApp activateIgnoringOtherApps:YES];
            putAbovePopover(question->alert.window);
            // The modal session may give its window a level of its own: once more inside of it.
            later([this, question] { putAbovePopover(question->alert.window); });
            const auto response = [question->alert runModal];
            if (!question->abandoned)
                answered(response);
            return;
        }
        question->parent = inner().window;
        [question->alert beginSheetModalForWindow:question->parent
                                completionHandler:^(NSModalResponse response) {
                                  if (!question->abandoned)
                                      answered(response);
                                }];
    }

    // A popover hangs on the menu bar, above the level of alerts.
    void putAbovePopover(NSWindow* alert) const {
        NSWindow* below = inner().window;
        alert.level = std::max(alert.level, below.visible ? below.level + 1 : 0);
    }

    void answered(NSModalResponse response) {
        const auto chosen = response - NSAlertFirstButtonReturn;
        const auto count = static_cast<NSModalResponse>(node_.buttons.size());
        question_.reset();
        if (chosen >= 0 && chosen < count)
            runAction(node_.buttons[static_cast<std::size_t>(chosen)].chosen);
        else
            runAction(node_.closed);
    }

    // Without an answer: what is shown has changed under the question.
    void close() {
        const auto question = std::exchange(question_, nullptr);
        if (!question)
            return;
        question->abandoned = true;
        if (question->parent)
            [question->parent endSheet:question->alert.window returnCode:NSModalResponseAbort];
        else if (NSApp.modalWindow == question->alert.window)
            endModal();
    }

    ConfirmationDialog node_;
    std::shared_ptr<Question> question_; // null: none is open
};

} // namespace

std::unique_ptr<Binding> bindDialog(const View& view) {
    return std::make_unique<DialogBinding>(view);
}

} // namespace orrivane
