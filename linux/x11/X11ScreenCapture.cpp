#include <linux/x11/X11ScreenCapture.h>

#include <linux/x11/Resample.h>

#include <xcb/composite.h>

#include <algorithm>
#include <cmath>

namespace orrivane::x11 {

namespace {
constexpr double pixelsPerPoint = 2; // of a captured image
}

struct X11ScreenCapture::Sent {
    Job job;
    StatusItem item;
    PixelReader::Read read;
};

X11ScreenCapture::X11ScreenCapture(Connection& connection, MainLoop& loop, X11Screens& screens,
                                   WindowTree& tree, StatusItems& items)
    : connection_(connection)
    , loop_(loop)
    , screens_(screens)
    , tree_(tree)
    , items_(items)
    , reader_(connection)
    , redirection_(connection)
    , self_(std::make_shared<X11ScreenCapture*>(this)) {}

void X11ScreenCapture::shareableContent(
    std::function<void(std::optional<ShareableContent>)> completion) {
    ShareableContent content;
    for (const auto& entry : items_.entries())
        if (entry.layer == WindowCensus::statusLayer && entry.number && entry.bounds)
            content.windows.push_back({*entry.number, *entry.bounds, nullptr});
    if (!connection_.isResponsive() || connection_.isLost())
        return completion(std::nullopt);
    completion(std::move(content));
}

void X11ScreenCapture::captureImage(const ShareableWindow& window,
                                    const CaptureConfiguration& configuration,
                                    std::function<void(std::optional<Image>)> completion) {
    jobs_.push_back({window.windowID, configuration, std::move(completion)});
    if (std::exchange(flushPosted_, true))
        return;
    loop_.post([weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock())
            (*self)->flushJobs();
    });
}

void X11ScreenCapture::flushJobs() {
    flushPosted_ = false;
    auto jobs = std::exchange(jobs_, {});
    if (jobs.empty())
        return; // another call has taken them along
    items_.current();
    const bool firstTry = std::ranges::none_of(jobs, &Job::waited);
    if (firstTry)
        endRedirectionsNotIn(jobs);
    std::vector<Sent> sent;
    std::vector<Job> failed;
    for (auto& job : jobs) {
        const auto* item = items_.find(job.window);
        if (!item)
            failed.push_back(std::move(job));
        else if (const auto read = begin(job, *item))
            sent.push_back({std::move(job), *item, *read});
        else
            waiting_.push_back(std::move(job));
    }
    receive(std::move(sent));
    for (const auto& job : failed)
        job.completion(std::nullopt);
    if (!waiting_.empty() && !settle_)
        settle_ = loop_.wakeUp(Redirection::settleTime, [this] {
            settle_.reset();
            std::ranges::move(std::exchange(waiting_, {}), std::back_inserter(jobs_));
            flushJobs();
        });
}

std::optional<PixelReader::Read> X11ScreenCapture::begin(Job& job, const StatusItem& item) {
    const PixelRect whole{0, 0, item.rect.width, item.rect.height};
    const auto* icon = tree_.find(item.window);
    const bool isDrawing =
        !job.waited && std::ranges::find(waiting_, item.window, &Job::window) != waiting_.end();
    if (isDrawing)
        return std::nullopt; // it has been asked to, for another capture
    if (redirection_.contains(item.window, item.serial))
        return reader_.sendRedirected(item.window, icon ? icon->border : 0, whole);
    if (job.waited || !somethingLiesOver(item))
        return reader_.send(item.window, whole);
    redirection_.begin(item.window, item.serial);
    redirected_.push_back(item.window);
    job.waited = true;
    return std::nullopt;
}

bool X11ScreenCapture::somethingLiesOver(const StatusItem& item) const {
    const auto* icon = tree_.find(item.window);
    const auto* top = icon ? tree_.topLevel(*icon) : nullptr;
    return top && std::ranges::any_of(tree_.above(*top), [&](const TreeWindow* window) {
               return tree_.rootRect(*window).intersects(item.rect);
           });
}

void X11ScreenCapture::receive(std::vector<Sent> sent) {
    const auto until = Connection::deadline();
    std::vector<std::optional<Image>> images;
    for (const auto& one : sent) {
        auto icon = reader_.receive(one.read, until);
        images.push_back(icon ? std::optional(place(std::move(icon), one)) : std::nullopt);
    }
    std::erase_if(drawn_, [this](const auto& entry) { return !items_.find(entry.first); });
    // Whoever is told may take as long as he likes: nothing is under way any more.
    for (std::size_t i = 0; i < sent.size(); ++i)
        sent[i].job.completion(std::move(images[i]));
}

// Most icons look as they did: the same image then tells everybody that nothing has changed.
Image X11ScreenCapture::place(std::shared_ptr<const PixelImage> icon, const Sent& sent) {
    const double factor = pixelsPerPoint / screens_.scale();
    const double top = std::round((sent.item.rect.y - sent.item.band.minY()) * factor);
    const auto& configuration = sent.job.configuration;
    const auto found = drawn_.find(sent.job.window);
    if (found != drawn_.end()) {
        const auto& last = found->second;
        if (last.top == top && last.configuration == configuration &&
            last.icon->pixelWidth() == icon->pixelWidth() && last.icon->pixels() == icon->pixels())
            return last.image;
    }
    Image image(onCanvas(*icon, configuration.width, configuration.height, factor, top));
    drawn_.insert_or_assign(sent.job.window, Drawn{std::move(icon), configuration, top, image});
    return image;
}

void X11ScreenCapture::endRedirectionsNotIn(const std::vector<Job>& jobs) {
    std::erase_if(redirected_, [&](std::uint32_t window) {
        if (std::ranges::find(jobs, window, &Job::window) != jobs.end() ||
            std::ranges::find(waiting_, window, &Job::window) != waiting_.end())
            return false;
        if (tree_.find(window))
            redirection_.end(window);
        else
            redirection_.forget(window);
        return true;
    });
}

bool X11ScreenCapture::preflightAccess() {
    if (!permitted_) {
        const auto probe = reader_.send(connection_.root(), {0, 0, 1, 1});
        const bool readable = reader_.receive(probe, Connection::deadline()) != nullptr;
        if (!connection_.isResponsive())
            return false; // not decided: the server has not answered yet
        permitted_ = readable && connection_.has(&xcb_composite_id);
    }
    return *permitted_;
}

} // namespace orrivane::x11
