#pragma once

#include <QObject>

namespace orrivane::desktop {

/// Blocks this process's only thread for ten seconds: it draws nothing and answers nobody.
void hang();

/// Hangs whenever SIGUSR1 arrives. One at a time.
class HangOnSignal final : public QObject {
    Q_OBJECT

  public:
    /// Throws std::runtime_error when no pipe can be made.
    HangOnSignal();
    ~HangOnSignal() override;

  private:
    void drain();

    int ends_[2] = {-1, -1};
};

} // namespace orrivane::desktop
