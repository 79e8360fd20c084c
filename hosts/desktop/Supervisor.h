#pragma once
// Starts applications and looks after them. One that runs, or is being started by whatever process
// of this runtime folder, isn't started again; one that has ended three times within a minute
// before it was ready isn't either, until that minute is over. What it prints goes to the log.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/desktop/ApplicationPackage.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "hosts/desktop/LaunchRecord.h"
#include "hosts/desktop/ProcessRegistry.h"

namespace quorvane::desktop {

class Supervisor {
 public:
  Supervisor(const DesktopConfiguration& configuration, const RuntimeFolder& folder,
             RunLoop& runLoop, ProcessRegistry& registry, quorvane::LogSink& log);
  ~Supervisor();
  Supervisor(const Supervisor&) = delete;
  Supervisor& operator=(const Supervisor&) = delete;

  /// 0 also where it runs or is being started; kLSUnknownErr, logged, where it can't be.
  OSStatus launch(const std::filesystem::path& application);
  /// One that was launched lives and hasn't announced itself.
  [[nodiscard]] bool awaitsOne() const;
  /// Whether one has announced itself since the latest launch, or ran at that already; says so
  /// once.
  bool takeLaunched() { return std::exchange(launched_, false); }
  /// What went wrong last, in words; empty: nothing.
  [[nodiscard]] const std::string& trouble() const { return trouble_; }
  /// Ends what was started here, where that is to end with this process. Doing it twice does no
  /// harm.
  void end();

 private:
  struct Started;

  OSStatus runsAlready();
  OSStatus launchLocked(const ApplicationPackage& package, const std::filesystem::path& program);
  LaunchStart start(const ApplicationPackage& package, const std::filesystem::path& program);
  void watch(std::unique_ptr<Started> started);
  void announced(std::int32_t pid);
  void ended(std::int32_t pid);
  void tellOfEnd(const Started& started, std::optional<int> status);
  void complain(const std::string& what);
  [[nodiscard]] std::vector<std::unique_ptr<Started>>::iterator find(std::int32_t pid);
  [[nodiscard]] std::filesystem::path recordOf(const std::string& name) const;
  [[nodiscard]] LaunchStarts readRecord(const std::string& name) const;
  void writeRecord(const std::string& name, const LaunchStarts& starts);

  const DesktopConfiguration configuration_;
  const RuntimeFolder& folder_;
  RunLoop& runLoop_;
  ProcessRegistry& registry_;
  quorvane::LogSink& log_;
  std::vector<std::unique_ptr<Started>> started_;  ///< they live
  std::unique_ptr<Registration> launches_;
  bool launched_ = false;
  std::string trouble_;
};

}  // namespace quorvane::desktop
