#pragma once

#include <linux/updater/AddressPolicy.h>
#include <linux/updater/UpdateOperation.h>

#include <QByteArray>
#include <QUrl>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

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

/// Fetches what is asked for. Main thread only.
class Network {
  public:
    /// Takes what has arrived; a sentence for the user ends the transfer.
    using Sink = std::function<std::optional<std::string>(const QByteArray& bytes)>;
    /// Called once, never inside `begin`; it may destroy the operation.
    using Finished = std::function<void(std::optional<TransferProblem>)>;

    Network() = default;
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;
    virtual ~Network() = default;

    /// One GET, from its start to its end. Takes nothing that was not asked for: no redirection to
    /// a forbidden address or from https to http, no more than five of them, no other media type,
    /// no other length, no content encoding, no cookies. The network outlives it.
    [[nodiscard]] virtual std::unique_ptr<UpdateOperation>
    begin(AddressPolicy policy, TransferRequest request, Sink sink, Finished finished) = 0;
};

} // namespace orrivane
