#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <linux/updater/Network.h>

#include <cstdint>
#include <optional>
#include <string>

class QNetworkAccessManager;
class QNetworkReply;

namespace orrivane {

/// A GET of the toolkit's network library.
class Transfer : public UpdateOperation {
  public:
    static constexpr int mostRedirections = 5;

    Transfer(QNetworkAccessManager& network, MainLoop& loop, AddressPolicy policy,
             TransferRequest request, Network::Sink sink, Network::Finished finished);
    ~Transfer() override;

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
    Network::Sink sink_;
    Network::Finished finished_;

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
