#pragma once

#include <QByteArray>
#include <QSslConfiguration>
#include <QString>
#include <QTcpServer>

#include <map>
#include <optional>
#include <vector>

namespace orrivane {

/// A web server on this machine that says exactly what a test gave it, faults included.
class LoopbackServer : public QTcpServer {
  public:
    struct Answer {
        QByteArray bytes;   ///< head and body as they go out
        bool stays = false; ///< the connection stays open after them
        bool drips = false; ///< one byte at a time, for ever after the last
    };

    LoopbackServer();

    /// From now on the server speaks TLS and shows this certificate (files in PEM).
    void secure(const QString& certificateFile, const QString& keyFile);

    [[nodiscard]] QString address(const QString& path) const;

    void answer(const QString& path, Answer answer) { answers_[path] = std::move(answer); }
    /// A whole answer with a length and a media type.
    void serve(const QString& path, const QByteArray& type, const QByteArray& body);
    void redirect(const QString& path, const QString& target);

    /// The heads of the requests, in order of arrival.
    [[nodiscard]] const std::vector<QByteArray>& requests() const { return requests_; }
    [[nodiscard]] int requestsFor(const QString& path) const;

  protected:
    void incomingConnection(qintptr descriptor) override;

  private:
    void take(class QTcpSocket* socket);

    std::optional<QSslConfiguration> security_;
    std::map<QString, Answer> answers_;
    std::vector<QByteArray> requests_;
};

} // namespace orrivane
