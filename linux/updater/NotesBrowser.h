#pragma once

#include <linux/updater/UpdatePage.h>

#include <QTextBrowser>

namespace orrivane {

/// Release notes. They are signed, but still only text: nothing is loaded for them, and a link
/// leads nowhere but to a secure page in the user's browser.
class NotesBrowser : public QTextBrowser {
  public:
    explicit NotesBrowser(QWidget* parent);

    void show(const ReleaseNotes& notes);

  protected:
    QVariant loadResource(int type, const QUrl& name) override;
};

} // namespace orrivane
