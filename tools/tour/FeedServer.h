#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <string>
#include <thread>

namespace orrivane::tour {

/// A web server on the loopback interface that gives out a few texts from a thread of its own.
class FeedServer {
  public:
    /// Throws std::runtime_error when there is no free port.
    FeedServer();
    ~FeedServer();
    FeedServer(const FeedServer&) = delete;
    FeedServer& operator=(const FeedServer&) = delete;

    [[nodiscard]] std::string address(const std::string& path) const;
    /// Before the first request only.
    void serve(const std::string& path, std::string mediaType, std::string body);
    void start();

  private:
    struct Document {
        std::string mediaType;
        std::string body;
    };

    void run();
    void answer(int connection);

    int listener_ = -1;
    std::uint16_t port_ = 0;
    std::map<std::string, Document> documents_;
    std::atomic<bool> ends_{false};
    std::thread thread_;
};

} // namespace orrivane::tour
