#include "tools/parameters/disk/PreferencesOnDisk.h"

#include <stdexcept>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/desktop/PrivateFolders.h"
#include "hosts/resources/AliasRecord.h"
#include "hosts/resources/ResourceFork.h"
#include "tools/parameters/disk/OutcomeOfFile.h"

namespace quorvane::parameters {
namespace {

using std::filesystem::path;

constexpr FourCharCode kLocation = "QLOC"_4cc;
constexpr std::int16_t kMainApplication = 128;

path preferencesFile(const path& preferences) { return preferences / "Quorvane ARC7 Preferences"; }

resources::Bytes aliasOf(const path& application) {
  if (application.native().size() > resources::kLongestAliasPath) {
    throw std::runtime_error(application.string() + ": the path is too long");
  }
  return resources::aliasRecord(application.native());
}

}  // namespace

std::optional<path> chosenMainApplication(const path& preferences) {
  const path file = preferencesFile(preferences);
  const auto bytes = desktop::readAppleDoubleFile(file);
  if (!bytes) throw std::runtime_error(file.string() + ": can't be read");
  const auto around = valueOf(file, resources::readAppleDouble(*bytes));
  const auto fork =
      valueOf(file, resources::readResourceFork(around.content(resources::kResourceForkEntry)));
  const resources::Resource* const alias = fork.find(kLocation, kMainApplication);
  const auto leadsTo = alias == nullptr ? std::nullopt : resources::pathOfAlias(alias->data);
  return leadsTo ? std::optional<path>(*leadsTo) : std::nullopt;
}

void chooseMainApplication(const path& preferences, const std::optional<path>& application) {
  const path file = preferencesFile(preferences);
  desktop::makePrivateFile(file);
  desktop::updateAppleDouble(file, [&](resources::AppleDouble& around) {
    resources::Bytes& bytes = around.contentOf(resources::kResourceForkEntry);
    resources::ResourceFork fork = valueOf(file, resources::readResourceFork(bytes));
    if (application) {
      fork.at(kLocation, kMainApplication).data = aliasOf(*application);
    } else {
      std::erase_if(fork.resources, [](const resources::Resource& each) {
        return each.type == kLocation && each.id == kMainApplication;
      });
    }
    bytes = valueOf(file, resources::writeResourceFork(fork));
  });
}

}  // namespace quorvane::parameters
