#include "FeedServer.h"

#include <array>
#include <cerrno>
#include <stdexcept>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orrivane::tour {

namespace {

constexpr int patience = 100; // ms between two looks at whether to end
constexpr std::size_t longestRequest = 16 << 10;

bool readable(int descriptor) {
    pollfd wanted{descriptor, POLLIN, 0};
    return poll(&wanted, 1, patience) == 1;
}

/// The head of a request; empty when none comes.
std::string headFrom(int connection) {
    std::string head;
    std::array<char, 4096> buffer{};
    constexpr int mostWaits = 50;
    for (int waits = 0; waits < mostWaits && head.size() < longestRequest; ++waits) {
        if (!readable(connection))
            continue;
        const auto count = recv(connection, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            return {};
        head.append(buffer.data(), static_cast<std::size_t>(count));
        if (head.find("\r\n\r\n") != std::string::npos)
            return head;
    }
    return {};
}

void sendAll(int connection, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0)
            return;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace

FeedServer::FeedServer()
    : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    constexpr int queue = 8;
    if (listener_ < 0 || bind(listener_, generic, size) != 0 || listen(listener_, queue) != 0 ||
        getsockname(listener_, generic, &size) != 0)
        throw std::runtime_error("no port for the release feed");
    port_ = ntohs(address.sin_port);
}

FeedServer::~FeedServer() {
    ends_ = true;
    if (thread_.joinable())
        thread_.join();
    close(listener_);
}

std::string FeedServer::address(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
}

void FeedServer::serve(const std::string& path, std::string mediaType, std::string body) {
    documents_[path] = {std::move(mediaType), std::move(body)};
}

void FeedServer::start() {
    thread_ = std::thread([this] { run(); });
}

void FeedServer::run() {
    while (!ends_) {
        if (!readable(listener_))
            continue;
        const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0)
            continue;
        answer(connection);
        close(connection);
    }
}

void FeedServer::answer(int connection) {
    const auto head = headFrom(connection);
    const auto start = head.find(' ');
    const auto end = head.find(' ', start + 1);
    if (start == std::string::npos || end == std::string::npos)
        return;
    const auto found = documents_.find(head.substr(start + 1, end - start - 1));
    if (found == documents_.end()) {
        sendAll(connection, "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n"
                            "Connection: close\r\n\r\n");
        return;
    }
    const auto& [mediaType, body] = found->second;
    sendAll(connection, "HTTP/1.1 200 OK\r\nContent-Type: " + mediaType + "\r\nContent-Length: " +
                            std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
}

} // namespace orrivane::tour
