#pragma once

#include <QProcess>
#include <QString>

namespace orrivane {

/// An Xvfb of the test's own.
class PrivateXServer {
  public:
    static constexpr int width = 800; // pixels
    static constexpr int height = 300;

    PrivateXServer();
    PrivateXServer(const PrivateXServer&) = delete;
    PrivateXServer& operator=(const PrivateXServer&) = delete;
    ~PrivateXServer();

    /// Such as ":12"; empty: there is no Xvfb on this machine.
    [[nodiscard]] QString display() const { return display_; }

  private:
    QProcess server_;
    QString display_;
};

} // namespace orrivane
