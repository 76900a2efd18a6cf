#include <linux/updater/QtNetwork.h>

#include <linux/updater/Transfer.h>

#include <QNetworkAccessManager>

#include <utility>

namespace orrivane {

QtNetwork::QtNetwork(MainLoop& loop)
    : loop_(loop)
    , manager_(std::make_unique<QNetworkAccessManager>()) {}

QtNetwork::~QtNetwork() = default;

std::unique_ptr<UpdateOperation> QtNetwork::begin(AddressPolicy policy, TransferRequest request,
                                                  Sink sink, Finished finished) {
    return std::make_unique<Transfer>(*manager_, loop_, std::move(policy), std::move(request),
                                      std::move(sink), std::move(finished));
}

} // namespace orrivane
