#include <linux/updater/NetworkReleaseSource.h>

#include <Orrivane/platform/MainLoop.h>
#include <linux/updater/Network.h>

#include <utility>

namespace orrivane {

namespace {

bool isFeedType(std::string_view type) {
    for (const std::string_view known : {"application/rss+xml", "application/xml", "text/xml"})
        if (type == known)
            return true;
    return false;
}

std::string withAdvice(const TransferProblem& problem) {
    return problem.unreachable ? problem.text + " Check the connection and try again later."
                               : problem.text;
}

} // namespace

class NetworkReleaseSource::Check : public UpdateOperation {
  public:
    Check(NetworkReleaseSource& source, std::string skipped,
          std::function<void(ReleaseChoice)> finished)
        : source_(source)
        , skipped_(std::move(skipped))
        , finished_(std::move(finished))
        , transfer_(source.network_.begin(
              source.settings_.policy, request(source.settings_),
              [this](const QByteArray& bytes) {
                  feed_ += bytes;
                  return std::nullopt;
              },
              [this](std::optional<TransferProblem> problem) { arrived(problem); })) {}

  private:
    static TransferRequest request(const UpdateSettings& settings) {
        TransferRequest request;
        request.address = QUrl(QString::fromStdString(settings.feed), QUrl::StrictMode);
        request.isWanted = isFeedType;
        request.largest = largestFeed;
        request.wholeTime = settings.feedTime;
        request.idleTime = settings.idleTime;
        return request;
    }

    void arrived(const std::optional<TransferProblem>& problem) {
        auto choice =
            problem ? ReleaseChoice{std::nullopt, withAdvice(*problem)} : choiceFromFeed();
        // The handler may destroy this.
        const auto finished = std::exchange(finished_, nullptr);
        finished(std::move(choice));
    }

    [[nodiscard]] ReleaseChoice choiceFromFeed() const {
        auto reading = readReleaseFeed(
            std::string_view(feed_.constData(), static_cast<std::size_t>(feed_.size())));
        if (reading.problem)
            return {std::nullopt, std::move(reading.problem)};
        return chooseRelease(reading.entries, *source_.key_, source_.settings_.running, skipped_);
    }

    NetworkReleaseSource& source_;
    std::string skipped_;
    std::function<void(ReleaseChoice)> finished_;
    QByteArray feed_;
    std::unique_ptr<UpdateOperation> transfer_;
};

class NetworkReleaseSource::Download : public UpdateOperation {
  public:
    Download(NetworkReleaseSource& source, ReleaseOffer offer, std::function<void(double)> progress,
             std::function<void(PackageResult)> finished)
        : source_(source)
        , offer_(std::move(offer))
        , progress_(std::move(progress))
        , finished_(std::move(finished))
        , file_(source.folder_.create(offer_.fileName)) {
        auto problem = file_->open();
        if (!problem) {
            begin();
            return;
        }
        const auto refuse = [this, text = std::move(*problem)] { finish({{}, text}); };
        refused_ = source.loop_.wakeUp(0, refuse);
    }

  private:
    void begin() {
        TransferRequest request;
        request.address = QUrl(QString::fromStdString(offer_.entry.address), QUrl::StrictMode);
        request.isWanted = isPackageType;
        request.largest = largestPackage;
        request.exact = offer_.length;
        request.wholeTime = source_.settings_.packageTime;
        request.idleTime = source_.settings_.idleTime;
        transfer_ = source_.network_.begin(
            source_.settings_.policy, std::move(request),
            [this](const QByteArray& bytes) { return take(bytes); },
            [this](std::optional<TransferProblem> problem) { arrived(problem); });
    }

    std::optional<std::string> take(const QByteArray& bytes) {
        if (auto problem = file_->write(
                std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()))))
            return problem;
        received_ += bytes.size();
        progress_(static_cast<double>(received_) / static_cast<double>(offer_.length));
        return std::nullopt;
    }

    void arrived(const std::optional<TransferProblem>& problem) {
        if (problem) {
            finish({{}, withAdvice(*problem)});
            return;
        }
        const auto isSigned = [this](std::span<const unsigned char> contents) {
            return source_.key_->verifies(contents, offer_.entry.fileSignature);
        };
        if (!file_->contentsAre(isSigned)) {
            finish({{},
                    "The file that arrived is not the one that Orrivane's developers signed. "
                    "It was deleted; do not install it from elsewhere."});
            return;
        }
        if (auto unwritten = file_->keep()) {
            finish({{}, std::move(unwritten)});
            return;
        }
        finish({file_->path(), std::nullopt});
    }

    void finish(PackageResult result) {
        // Before anybody hears of it, so that nothing of a refused file is left; the handler may
        // destroy this.
        file_.reset();
        const auto finished = std::exchange(finished_, nullptr);
        finished(std::move(result));
    }

    NetworkReleaseSource& source_;
    ReleaseOffer offer_;
    std::function<void(double)> progress_;
    std::function<void(PackageResult)> finished_;
    std::unique_ptr<PackageFile> file_;
    std::int64_t received_ = 0; // bytes
    Subscription refused_;
    std::unique_ptr<UpdateOperation> transfer_; // dies before what it writes to
};

NetworkReleaseSource::NetworkReleaseSource(UpdateSettings settings, PackageFolder folder,
                                           Network& network, MainLoop& loop)
    : settings_(std::move(settings))
    , folder_(std::move(folder))
    , network_(network)
    , loop_(loop)
    , key_(settings_.feed.empty() ? std::nullopt : PublicKey::fromBase64(settings_.key)) {}

NetworkReleaseSource::~NetworkReleaseSource() = default;

std::unique_ptr<UpdateOperation>
NetworkReleaseSource::check(const std::string& skipped,
                            std::function<void(ReleaseChoice)> finished) {
    return std::make_unique<Check>(*this, skipped, std::move(finished));
}

std::unique_ptr<UpdateOperation>
NetworkReleaseSource::download(const ReleaseOffer& offer, std::function<void(double)> progress,
                               std::function<void(PackageResult)> finished) {
    return std::make_unique<Download>(*this, offer, std::move(progress), std::move(finished));
}

} // namespace orrivane
