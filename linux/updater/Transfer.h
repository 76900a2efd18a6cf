#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <linux/updater/AddressPolicy.h>

#include <QByteArray>
#include <QUrl>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QNetworkAccessManager;
class QNetworkReply;

namespace orrivane {

/// Why something did not arrive.
struct TransferProblem {
    std::string text;         ///< a sentence for the user
    bool unreachable = false; ///< nobody answered; trying again later may help
};

/// What is asked for and how much of it is taken.
struct TransferRequest {
    QUrl address;
    std::function<bool(std::string_view mediaType)> isWanted;
    std::int64_t largest = 0;          ///< bytes
    std::optional<std::int64_t> exact; ///< bytes, if it is known before
    double wholeTime = 0;              ///< seconds for everything, redirections included
    double idleTime = 30;              ///< seconds in which nothing arrives
};

/// One GET, from its start to its end. Takes nothing that was not asked for: no redirection to a
/// forbidden address or from https to http, no more than five of them, no other media type, no
/// other length, no content encoding, no cookies. Destroying it ends it quietly. Main thread only.
class Transfer {
  public:
    /// Takes what has arrived; a sentence for the user ends the transfer.
    using Sink = std::function<std::optional<std::string>(const QByteArray& bytes)>;
    /// Called once, never inside the constructor; it may destroy the transfer.
    using Finished = std::function<void(std::optional<TransferProblem>)>;

    static constexpr int mostRedirections = 5;

    Transfer(QNetworkAccessManager& network, MainLoop& loop, AddressPolicy policy,
             TransferRequest request, Sink sink, Finished finished);
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    ~Transfer();

  private:
    void begin(const QUrl& address);
    void readHead();
    /// False when that ended the transfer; then this may be gone.
    [[nodiscard]] bool readBody();
    void replyFinished();
    void redirect();
    [[nodiscard]] std::optional<std::string> problemOfHead() const;
    [[nodiscard]] TransferProblem networkProblem() const;
    void armIdle();
    void dropReply();
    void finish(std::optional<TransferProblem> problem);
    void fail(std::string text, bool unreachable = false);

    QNetworkAccessManager& network_;
    MainLoop& loop_;
    AddressPolicy policy_;
    TransferRequest request_;
    Sink sink_;
    Finished finished_;

    QNetworkReply* reply_ = nullptr; // the manager's; deleted later, from here
    QUrl current_;
    bool headRead_ = false;
    int redirections_ = 0;
    std::int64_t received_ = 0; // bytes
    Subscription idle_;
    Subscription whole_;
    Subscription refused_;
};

} // namespace orrivane
