#include "apps/ClientApplications.h"

#include <exception>
#include <iostream>
#include <utility>

#include "hosts/ibus/ClientProgram.h"
#include "tools/parameters/UsualParameters.h"
#include "tools/parameters/disk/ParameterFileOnDisk.h"

namespace quorvane {
namespace {

/// Beyond those that the system gives.
constexpr std::int32_t kFirstUnknownProcess = 0x70000000;
constexpr std::size_t kMostClients = 1000;

}  // namespace

ClientApplications::ClientApplications(desktop::ProcessRegistry& registry, FrontApplication& front,
                                       std::filesystem::path support)
    : registry_(registry), front_(front), support_(std::move(support)) {}

void ClientApplications::toFront(std::string_view client) {
  const auto found = known_.find(client);
  const bool same = found != known_.end() && registry_.find(found->second) != nullptr;
  front_.setClient(same ? found->second : processOf(client));
}

/// One that nobody can find has a number all the same.
std::int32_t ClientApplications::processOf(std::string_view client) {
  if (known_.size() == kMostClients) known_.clear();
  ibus::ClientProgram program = ibus::programOf(client);
  if (program.pid == 0) program.pid = ibus::processNamed(program.name);
  if (program.pid == 0 ||
      !registry_.note({program.pid, {program.name, "????"_4cc, "APPL"_4cc, program.name}})) {
    program.pid = kFirstUnknownProcess + static_cast<std::int32_t>(known_.size());
    registry_.note({program.pid, {program.name, "????"_4cc, "APPL"_4cc, program.name}});
  }
  setUsualSwitches(program.name);
  known_[std::string(client)] = program.pid;
  return program.pid;
}

void ClientApplications::setUsualSwitches(const std::string& program) {
  const parameters::KnownApplication application{"????"_4cc, program};
  try {
    if (parameters::switchesOf(parameters::readParameterFile(support_), application)) return;
    const std::uint32_t usual = ibus::isTerminal(program) ? 0 : parameters::kTypeApplication.usual;
    parameters::changeParameterFile(
        support_, [&](auto& file) { parameters::setSwitches(file, application, usual); });
  } catch (const std::exception& error) {
    std::cerr << "quorvane: no switches for " << program << ": " << error.what() << '\n';
  }
}

}  // namespace quorvane
