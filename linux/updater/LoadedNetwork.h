#pragma once

#include <linux/updater/Network.h>

#include <memory>
#include <optional>
#include <string>

namespace orrivane {

class MainLoop;

/// A network from a module that is loaded when something is first asked for. What the network
/// library brings along takes a mebibyte, and most of the time nobody needs it.
class LoadedNetwork : public Network {
  public:
    /// `module` is a file's absolute path; `version` the program's own, and a module of another
    /// one is refused. The loop outlives it.
    LoadedNetwork(std::string module, std::string version, MainLoop& loop);
    ~LoadedNetwork() override;

    /// Where the module belongs to the running program; the application object must exist.
    static std::string moduleOfProgram();

    [[nodiscard]] std::unique_ptr<UpdateOperation>
    begin(AddressPolicy policy, TransferRequest request, Sink sink, Finished finished) override;

  private:
    /// A sentence for the user when there is no network. A file that could not be loaded is tried
    /// again the next time.
    std::optional<std::string> load();

    std::string module_;
    std::string version_;
    MainLoop& loop_;
    std::unique_ptr<Network> loaded_;
};

} // namespace orrivane
