#pragma once

#include <functional>

class QUrl;

namespace orrivane {

/// Which addresses may be asked at all, redirections included.
using AddressPolicy = std::function<bool(const QUrl&)>;

/// A complete https address without a user name in it.
bool isSecureAddress(const QUrl& address);
/// The same, or plain http to this very machine: for trying things out.
bool isSecureOrLoopbackAddress(const QUrl& address);

} // namespace orrivane
