#include "tools/setup/Setup.h"

#include <array>

#include "tools/setup/InputSource.h"
#include "tools/setup/Link.h"

namespace quorvane::setup {
namespace {

/// In the order of their making.
constexpr std::array kLinks{"environment", "unit", "service"};

std::vector<Link> linksFor(const Surroundings& surroundings, const Installation& installation) {
  if (!surroundings.hasSystemd) return {};
  const auto& [environment, unit, service] = kLinks;
  const std::filesystem::path units = surroundings.configuration / "systemd/user";
  std::vector<Link> links;
  if (!installation.isKnownToSystemd()) {
    links = {{environment, surroundings.configuration / "environment.d/60-quorvane.conf",
              installation.environment()},
             {unit, units / "quorvane.service", installation.unit()}};
  }
  links.push_back(
      {service, units / "graphical-session.target.wants/quorvane.service", installation.unit()});
  return links;
}

}  // namespace

Report setUp(const Surroundings& surroundings, const Installation& installation) {
  Report report;
  Record record(surroundings.record, report);
  for (const InputSource& each : inputSources(surroundings.components)) {
    addInputSource(each, record, report);
  }
  for (const Link& each : linksFor(surroundings, installation)) makeLink(each, record, report);
  return report;
}

Report takeBack(const Surroundings& surroundings) {
  Report report;
  Record record(surroundings.record, report);
  for (auto name = kLinks.rbegin(); name != kLinks.rend(); ++name) {
    removeLink(*name, record, report);
  }
  for (const InputSource& each : inputSources(surroundings.components)) {
    removeInputSource(each, record, report);
  }
  return report;
}

}  // namespace quorvane::setup
