#include <linux/updater/AddressPolicy.h>

#include <QUrl>

#include <string>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace orrivane {

namespace {

bool isComplete(const QUrl& address) {
    return address.isValid() && !address.host().isEmpty() && address.userInfo().isEmpty();
}

bool isLoopback(const std::string& host) {
    in6_addr six{};
    if (inet_pton(AF_INET6, host.c_str(), &six) == 1)
        return IN6_IS_ADDR_LOOPBACK(&six);
    in_addr four{};
    return inet_pton(AF_INET, host.c_str(), &four) == 1 &&
           (ntohl(four.s_addr) >> IN_CLASSA_NSHIFT) == IN_LOOPBACKNET;
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
           isLoopback(address.host().toStdString());
}

} // namespace orrivane
