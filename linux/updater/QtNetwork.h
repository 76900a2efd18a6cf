#pragma once

#include <linux/updater/Network.h>

#include <memory>

class QNetworkAccessManager;

namespace orrivane {

class MainLoop;

/// The toolkit's network library.
class QtNetwork : public Network {
  public:
    /// The loop outlives it.
    explicit QtNetwork(MainLoop& loop);
    ~QtNetwork() override;

    [[nodiscard]] std::unique_ptr<UpdateOperation>
    begin(AddressPolicy policy, TransferRequest request, Sink sink, Finished finished) override;

  private:
    MainLoop& loop_;
    std::unique_ptr<QNetworkAccessManager> manager_;
};

} // namespace orrivane
