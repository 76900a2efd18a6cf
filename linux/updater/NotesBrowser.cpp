#include <linux/updater/NotesBrowser.h>

#include <linux/updater/AddressPolicy.h>

#include <QDesktopServices>
#include <QTextCursor>
#include <QTextDocument>

namespace orrivane {

NotesBrowser::NotesBrowser(QWidget* parent)
    : QTextBrowser(parent) {
    setAccessibleName("What is new");
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, [](const QUrl& address) {
        if (isSecureAddress(address))
            QDesktopServices::openUrl(address);
    });
}

void NotesBrowser::show(const ReleaseNotes& notes) {
    const auto text = QString::fromStdString(notes.text);
    switch (notes.format) {
    case ReleaseNotes::Format::plain:
        setPlainText(text);
        break;
    case ReleaseNotes::Format::markdown:
        document()->setMarkdown(
            text, QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub) |
                      QTextDocument::MarkdownNoHTML);
        break;
    case ReleaseNotes::Format::html:
        setHtml(text);
        break;
    }
    const QUrl link(QString::fromStdString(notes.link), QUrl::StrictMode);
    if (isSecureAddress(link)) {
        append({});
        append("<a href=\"" + link.toString(QUrl::FullyEncoded).toHtmlEscaped() +
               "\">More about this release</a>");
    }
    moveCursor(QTextCursor::Start);
}

QVariant NotesBrowser::loadResource(int, const QUrl&) {
    return {};
}

} // namespace orrivane
