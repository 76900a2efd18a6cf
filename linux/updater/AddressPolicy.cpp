#include <linux/updater/AddressPolicy.h>

#include <QHostAddress>
#include <QUrl>

namespace orrivane {

namespace {

bool isComplete(const QUrl& address) {
    return address.isValid() && !address.host().isEmpty() && address.userInfo().isEmpty();
}

} // namespace

bool isSecureAddress(const QUrl& address) {
    return isComplete(address) && address.scheme() == QLatin1String("https");
}

bool isSecureOrLoopbackAddress(const QUrl& address) {
    if (isSecureAddress(address))
        return true;
    // A name is no proof: whoever answers for names decides where it leads.
    return isComplete(address) && address.scheme() == QLatin1String("http") &&
           QHostAddress(address.host()).isLoopback();
}

} // namespace orrivane
