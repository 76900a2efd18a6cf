#include <linux/updater/Transfer.h>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

namespace orrivane {

namespace {

constexpr int statusOk = 200;
constexpr qint64 readBuffer = 256 << 10; // bytes; more than this never waits in memory

bool isRedirection(int status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

std::string mediaTypeOf(const QNetworkReply& reply) {
    const auto field = reply.rawHeader("Content-Type");
    return field.split(';').constFirst().trimmed().toLower().toStdString();
}

// What the server sends goes into a sentence: nothing but what a media type is made of.
bool isPresentable(const std::string& type) {
    constexpr std::size_t longest = 80;
    return !type.empty() && type.size() <= longest &&
           type.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789/.+-") == std::string::npos;
}

std::string hostOf(const QUrl& address) {
    return address.host(QUrl::FullyEncoded).toStdString();
}

QNetworkRequest plainRequest(const QUrl& address) {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(attribute, QNetworkRequest::Manual);
    // Set by hand, so that the library unpacks nothing and lengths are those of the file.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setRawHeader("User-Agent", "Orrivane");
    return request;
}

} // namespace

Transfer::Transfer(QNetworkAccessManager& network, MainLoop& loop, AddressPolicy policy,
                   TransferRequest request, Network::Sink sink, Network::Finished finished)
    : network_(network)
    , loop_(loop)
    , policy_(std::move(policy))
    , request_(std::move(request))
    , sink_(std::move(sink))
    , finished_(std::move(finished)) {
    whole_ = loop_.wakeUp(request_.wholeTime, [this] {
        fail("The server " + hostOf(current_) + " takes too long.", true);
    });
    begin(request_.address);
}

Transfer::~Transfer() {
    dropReply();
}

void Transfer::begin(const QUrl& address) {
    current_ = address;
    headRead_ = false;
    if (!policy_(address)) {
        refused_ = loop_.wakeUp(0, [this] {
            fail("The address " + current_.toString(QUrl::RemoveUserInfo).toStdString() +
                 " is not a secure one.");
        });
        return;
    }
    armIdle();
    reply_ = network_.get(plainRequest(address));
    reply_->setReadBufferSize(readBuffer);
    QObject::connect(reply_, &QNetworkReply::metaDataChanged, reply_, [this] { readHead(); });
    QObject::connect(reply_, &QNetworkReply::readyRead, reply_,
                     [this] { static_cast<void>(readBody()); });
    QObject::connect(reply_, &QNetworkReply::finished, reply_, [this] { replyFinished(); });
}

void Transfer::readHead() {
    armIdle();
    if (headRead_ || statusOf(*reply_) == 0)
        return;
    headRead_ = true;
    if (isRedirection(statusOf(*reply_)))
        redirect();
    else if (auto problem = problemOfHead())
        fail(std::move(*problem));
}

std::optional<std::string> Transfer::problemOfHead() const {
    const auto server = "The server " + hostOf(current_);
    if (const int status = statusOf(*reply_); status != statusOk)
        return server + " answered with the error " + std::to_string(status) + ".";
    const auto type = mediaTypeOf(*reply_);
    if (!request_.isWanted(type))
        return server + " sent something else" + (isPresentable(type) ? " (" + type + ")." : ".");
    const auto encoding = reply_->rawHeader("Content-Encoding").toLower();
    if (!encoding.isEmpty() && encoding != "identity")
        return server + " sent it packed, which was not asked for.";
    const auto announced = reply_->header(QNetworkRequest::ContentLengthHeader);
    if (!announced.isValid())
        return std::nullopt;
    if (request_.exact && announced.toLongLong() != *request_.exact)
        return server + " offers a file of another length than the release feed says.";
    if (announced.toLongLong() > request_.largest)
        return server + " offers more than is taken.";
    return std::nullopt;
}

void Transfer::redirect() {
    const auto target =
        current_.resolved(reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl());
    dropReply();
    if (++redirections_ > mostRedirections) {
        fail("The server " + hostOf(current_) + " only leads from one address to the next.");
        return;
    }
    const auto secure = QLatin1String("https");
    if (current_.scheme() == secure && target.scheme() != secure) {
        fail("The server " + hostOf(current_) + " leads to an address that is not secure.");
        return;
    }
    begin(target);
}

bool Transfer::readBody() {
    armIdle();
    const auto bytes = reply_->readAll();
    received_ += bytes.size();
    std::optional<std::string> problem;
    if (request_.exact && received_ > *request_.exact)
        problem = "The file is longer than the release feed says.";
    else if (received_ > request_.largest)
        problem = "The server " + hostOf(current_) + " sends more than is taken.";
    else
        problem = sink_(bytes);
    if (!problem)
        return true;
    fail(std::move(*problem));
    return false;
}

void Transfer::replyFinished() {
    if (reply_->error() != QNetworkReply::NoError || !headRead_) {
        finish(networkProblem());
        return;
    }
    if (reply_->bytesAvailable() > 0 && !readBody())
        return;
    if (request_.exact && received_ < *request_.exact) {
        fail("The file ends before the length that the release feed says.");
        return;
    }
    finish(std::nullopt);
}

TransferProblem Transfer::networkProblem() const {
    const auto host = hostOf(current_);
    switch (reply_->error()) {
    case QNetworkReply::HostNotFoundError:
        return {"The server " + host + " cannot be found.", true};
    case QNetworkReply::ConnectionRefusedError:
        return {"The server " + host + " does not answer.", true};
    case QNetworkReply::RemoteHostClosedError:
        return {"The server " + host + " ended the connection before everything had arrived.",
                true};
    case QNetworkReply::SslHandshakeFailedError:
        return {"The server " + host + " cannot prove that it is that server."};
    default:
        return {"The connection to the server " + host + " failed.", true};
    }
}

void Transfer::armIdle() {
    idle_ = loop_.wakeUp(request_.idleTime, [this] {
        fail("The server " + hostOf(current_) + " has stopped sending.", true);
    });
}

void Transfer::dropReply() {
    idle_.reset();
    auto* reply = std::exchange(reply_, nullptr);
    if (!reply)
        return;
    reply->disconnect();
    reply->deleteLater(); // which ends it; told to end in its own signal, it complains
}

void Transfer::fail(std::string text, bool unreachable) {
    finish(TransferProblem{std::move(text), unreachable});
}

void Transfer::finish(std::optional<TransferProblem> problem) {
    // The handler may destroy this.
    const auto finished = std::exchange(finished_, nullptr);
    whole_.reset();
    dropReply();
    if (finished)
        finished(std::move(problem));
}

} // namespace orrivane
