#include <tests/linux/updater/support/LoopbackServer.h>

#include <QFile>
#include <QHostAddress>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>

namespace orrivane {

LoopbackServer::LoopbackServer() {
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (auto* socket = nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { take(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

void LoopbackServer::secure(const QString& certificateFile, const QString& keyFile) {
    QFile key(keyFile);
    if (!key.open(QIODevice::ReadOnly))
        return;
    security_.emplace();
    security_->setLocalCertificateChain(QSslCertificate::fromPath(certificateFile));
    security_->setPrivateKey(QSslKey(&key, QSsl::Rsa));
}

void LoopbackServer::incomingConnection(qintptr descriptor) {
    if (!security_) {
        QTcpServer::incomingConnection(descriptor);
        return;
    }
    auto* socket = new QSslSocket(this);
    socket->setSocketDescriptor(descriptor);
    socket->setSslConfiguration(*security_);
    socket->startServerEncryption();
    addPendingConnection(socket);
}

QString LoopbackServer::address(const QString& path) const {
    return QStringLiteral("%1://127.0.0.1:%2%3")
        .arg(security_ ? QStringLiteral("https") : QStringLiteral("http"))
        .arg(serverPort())
        .arg(path);
}

void LoopbackServer::serve(const QString& path, const QByteArray& type, const QByteArray& body) {
    answer(path, {"HTTP/1.1 200 OK\r\nContent-Type: " + type +
                      "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body,
                  false, false});
}

void LoopbackServer::redirect(const QString& path, const QString& target) {
    answer(path,
           {"HTTP/1.1 302 Found\r\nLocation: " + target.toUtf8() + "\r\nContent-Length: 0\r\n\r\n",
            false, false});
}

int LoopbackServer::requestsFor(const QString& path) const {
    const auto start = "GET " + path.toUtf8() + ' ';
    return static_cast<int>(
        std::count_if(requests_.begin(), requests_.end(),
                      [&](const auto& each) { return each.startsWith(start); }));
}

void LoopbackServer::take(QTcpSocket* socket) {
    const auto head = socket->peek(1 << 16);
    if (!head.contains("\r\n\r\n"))
        return;
    requests_.push_back(socket->readAll());
    const auto path = QString::fromUtf8(head.split(' ').value(1));
    const auto found = answers_.find(path);
    const auto answer =
        found == answers_.end()
            ? Answer{"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n", false, false}
            : found->second;
    socket->write(answer.bytes);
    if (answer.drips) {
        auto* timer = new QTimer(socket);
        connect(timer, &QTimer::timeout, socket, [socket] { socket->write("x"); });
        timer->start(1);
    } else if (!answer.stays) {
        socket->disconnectFromHost();
    }
}

} // namespace orrivane
