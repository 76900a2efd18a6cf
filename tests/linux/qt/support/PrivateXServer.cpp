#include "PrivateXServer.h"

namespace orrivane {

namespace {
constexpr int bound = 20'000; // milliseconds
}

PrivateXServer::PrivateXServer() {
    server_.setStandardErrorFile(QProcess::nullDevice());
    const auto size = QStringLiteral("%1x%2x24").arg(width).arg(height);
    server_.start("Xvfb",
                  {"-displayfd", "1", "-screen", "0", size, "-noreset", "-nolisten", "tcp"});
    while (server_.waitForReadyRead(bound))
        if (server_.canReadLine()) {
            display_ = ":" + QString::fromLatin1(server_.readLine()).trimmed();
            return;
        }
}

PrivateXServer::~PrivateXServer() {
    server_.terminate();
    if (!server_.waitForFinished(bound))
        server_.kill();
    server_.waitForFinished(bound);
}

} // namespace orrivane
