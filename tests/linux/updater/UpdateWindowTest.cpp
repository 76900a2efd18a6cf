#include <linux/updater/UpdateWindow.h>

#include <linux/updater/UpdatePages.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace orrivane {
namespace {

ReleaseOffer offerOf(const std::string& notes, const std::string& format) {
    ReleaseOffer offer;
    offer.entry.version = "2.0";
    offer.entry.notes = notes;
    offer.entry.notesFormat = format;
    offer.fileName = "orrivane_2.0.deb";
    offer.length = 500;
    return offer;
}

struct UpdateWindowTest : ::testing::Test {
    UpdateWindow window;
    std::vector<UpdateChoice> choices;

    ~UpdateWindowTest() override { drain(); }

    void present(const UpdatePage& page) {
        window.present(page, [this](UpdateChoice choice) { choices.push_back(choice); });
        drain();
    }
    static void drain() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static QDialog* dialog() {
        for (auto* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<QDialog*>(widget); found && found->isVisible())
                return found;
        return nullptr;
    }
    static QPushButton* button(const QString& text) {
        for (auto* each : dialog()->findChildren<QPushButton*>())
            if (each->text() == text && each->isVisible())
                return each;
        return nullptr;
    }
    static QTextBrowser* notes() { return dialog()->findChild<QTextBrowser*>(); }
};

TEST_F(UpdateWindowTest, everyButtonReportsItsChoiceOnce) {
    for (const auto& [label, choice] : {std::pair("Skip This Version", UpdateChoice::skip),
                                        std::pair("Remind Me Later", UpdateChoice::later),
                                        std::pair("Install Update", UpdateChoice::install)}) {
        choices.clear();
        present(updatePages::offer(offerOf("n", "plain-text"), "1.0"));
        auto* pressed = button(label);
        ASSERT_TRUE(pressed) << label;
        pressed->click();
        pressed->click();
        EXPECT_EQ(choices, std::vector<UpdateChoice>{choice});
    }
}

TEST_F(UpdateWindowTest, returnInstallsAndEscapeIsToBeRemindedLater) {
    present(updatePages::offer(offerOf("n", "plain-text"), "1.0"));
    EXPECT_TRUE(button("Install Update")->isDefault());
    QTest::keyClick(dialog(), Qt::Key_Return);
    EXPECT_EQ(choices, std::vector<UpdateChoice>{UpdateChoice::install});
    choices.clear();
    present(updatePages::offer(offerOf("n", "plain-text"), "1.0"));
    QTest::keyClick(dialog(), Qt::Key_Escape);
    EXPECT_EQ(choices, std::vector<UpdateChoice>{UpdateChoice::later});
}

TEST_F(UpdateWindowTest, closingACheckCancelsIt) {
    present(updatePages::checking());
    EXPECT_TRUE(dialog()->findChild<QProgressBar*>()->isVisible());
    EXPECT_EQ(dialog()->findChild<QProgressBar*>()->maximum(), 0);
    dialog()->close();
    EXPECT_EQ(choices, std::vector<UpdateChoice>{UpdateChoice::cancel});
}

TEST_F(UpdateWindowTest, progressMovesTheBar) {
    present(updatePages::downloading(offerOf("", "")));
    window.setProgress(0.5);
    const auto* bar = dialog()->findChild<QProgressBar*>();
    EXPECT_EQ(bar->value() * 2, bar->maximum());
}

TEST_F(UpdateWindowTest, notesAreShownAsTheirFormatSaysAndOnlyWhereThereAreSome) {
    present(updatePages::offer(offerOf("<b>bold</b>", "plain-text"), "1.0"));
    EXPECT_EQ(notes()->toPlainText(), "<b>bold</b>");
    present(updatePages::offer(offerOf("<b>bold</b>", ""), "1.0"));
    EXPECT_EQ(notes()->toPlainText(), "bold");
    present(updatePages::offer(offerOf("**bold**", "markdown"), "1.0"));
    EXPECT_EQ(notes()->toPlainText().trimmed(), "bold");
    present(updatePages::newest("1.0"));
    EXPECT_FALSE(notes()->isVisible());
}

TEST_F(UpdateWindowTest, notesLoadNothingFromElsewhere) {
    present(updatePages::offer(offerOf("<img src='file:///etc/hostname'>text", ""), "1.0"));
    EXPECT_FALSE(notes()
                     ->loadResource(QTextDocument::ImageResource, QUrl("file:///etc/hostname"))
                     .isValid());
    EXPECT_FALSE(notes()->openLinks());
}

TEST_F(UpdateWindowTest, onlyASecureLinkToMoreIsShown) {
    auto offer = offerOf("n", "plain-text");
    offer.entry.notesLink = "javascript:alert(1)";
    present(updatePages::offer(offer, "1.0"));
    EXPECT_FALSE(notes()->toPlainText().contains("More"));
    offer.entry.notesLink = "https://example.org/notes";
    present(updatePages::offer(offer, "1.0"));
    EXPECT_TRUE(notes()->toPlainText().contains("More about this release"));
}

TEST_F(UpdateWindowTest, dismissingInsideAButtonIsSafe) {
    window.present(updatePages::newest("1.0"), [this](UpdateChoice) { window.dismiss(); });
    drain();
    button("OK")->click();
    drain();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_FALSE(window.hasFocus());
}

TEST_F(UpdateWindowTest, theProgramHasTheFocusWhileAnyOfItsWindowsIsActive) {
    EXPECT_FALSE(window.hasFocus());
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_TRUE(window.hasFocus());
    other.hide();
    drain();
    EXPECT_FALSE(window.hasFocus());
    present(updatePages::newest("1.0"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog()));
    EXPECT_TRUE(window.hasFocus());
}

TEST_F(UpdateWindowTest, nothingOfAPageIsCutOff) {
    for (const auto& page :
         {updatePages::checking(), updatePages::newest("1.0"),
          updatePages::failed(std::string(100, 'w') +
                              " and more words, so many that they need more than a single line"),
          updatePages::offer(offerOf("n", "plain-text"), "1.0"),
          updatePages::downloading(offerOf("", "")),
          updatePages::handedOver(offerOf("", ""), "/home/somebody/.cache/orrivane/updates/a.deb",
                                  true)}) {
        present(page);
        for (auto* label : dialog()->findChildren<QLabel*>()) {
            EXPECT_TRUE(!label->isVisible() ||
                        label->height() >= label->heightForWidth(label->width()))
                << label->width() << " x " << label->height() << " needs "
                << label->heightForWidth(label->width()) << " in " << dialog()->width() << ": "
                << label->text().toStdString();
        }
        for (auto* each : dialog()->findChildren<QPushButton*>()) {
            EXPECT_TRUE(!each->isVisible() || each->width() >= each->minimumSizeHint().width());
        }
    }
}

} // namespace
} // namespace orrivane
