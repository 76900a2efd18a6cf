#include <linux/updater/LoadedNetwork.h>

#include <Orrivane/platform/MainLoop.h>
#include <linux/updater/NetworkModule.h>

#include <QCoreApplication>
#include <QLibrary>

#include <utility>

namespace orrivane {

namespace {

/// What ends before it has begun.
class Refusal : public UpdateOperation {
  public:
    Refusal(MainLoop& loop, std::string problem, Network::Finished finished)
        : finished_(std::move(finished))
        , told_(loop.wakeUp(0, [this, text = std::move(problem)] {
            // The handler may destroy this.
            const auto tell = std::exchange(finished_, nullptr);
            tell(TransferProblem{text});
        })) {}

  private:
    Network::Finished finished_;
    Subscription told_;
};

template <class Function>
Function* resolve(QLibrary& library, const char* name) {
    return reinterpret_cast<Function*>(library.resolve(name));
}

} // namespace

LoadedNetwork::LoadedNetwork(std::string module, std::string version, MainLoop& loop)
    : module_(std::move(module))
    , version_(std::move(version))
    , loop_(loop) {}

LoadedNetwork::~LoadedNetwork() = default;

std::string LoadedNetwork::moduleOfProgram() {
    return QCoreApplication::applicationDirPath().toStdString() + "/" ORRIVANE_NETWORK_MODULE;
}

std::optional<std::string> LoadedNetwork::load() {
    if (loaded_)
        return std::nullopt;
    QLibrary library(QString::fromStdString(module_));
    const auto version = resolve<NetworkModule::Version>(library, NetworkModule::versionName);
    const auto make = resolve<NetworkModule::Make>(library, NetworkModule::makeName);
    if (!version || !make)
        return "A part of Orrivane that updates need cannot be loaded (" + module_ +
               "), perhaps because the system was updated meanwhile. Start Orrivane again; if that "
               "does not help, install it again.";
    // A package that was installed meanwhile has put another file in its place.
    if (version() != version_)
        return "Orrivane was changed while it ran. Quit it and start it again.";
    loaded_.reset(make(loop_));
    return std::nullopt;
}

std::unique_ptr<UpdateOperation> LoadedNetwork::begin(AddressPolicy policy, TransferRequest request,
                                                      Sink sink, Finished finished) {
    if (auto problem = load())
        return std::make_unique<Refusal>(loop_, std::move(*problem), std::move(finished));
    return loaded_->begin(std::move(policy), std::move(request), std::move(sink),
                          std::move(finished));
}

} // namespace orrivane
