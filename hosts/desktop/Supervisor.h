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
  /// The one launched last lives and hasn't announced itself, and wasn't given up before.
  [[nodiscard]] bool awaitsOne() const;
  /// It won't be awaited again.
  void stopAwaiting();
  /// Whether the one launched last has announced itself since, or ran at that already; says so
  /// once.
  bool takeLaunched() { return std::exchange(launched_, false); }
  /// What went wrong last, in words; empty: nothing.
  [[nodiscard]] const std::string& trouble() const { return trouble_; }
  /// Ends what was started here, where that is to end with this process. Doing it twice does no
  /// harm.
  void end();

 private:
  struct Started;

  using Starteds = std::vector<std::unique_ptr<Started>>;

  OSStatus runsAlready();
  OSStatus launchLocked(const ApplicationPackage& package, const std::filesystem::path& program);
  OSStatus livesAlready(const std::string& name, const std::filesystem::path& record,
                        std::int32_t pid);
  [[nodiscard]] std::int32_t livingOne(const std::filesystem::path& record,
                                       const LaunchStarts& starts) const;
  LaunchStart start(const ApplicationPackage& package, const std::filesystem::path& program,
                    const std::filesystem::path& record);
  void watch(std::unique_ptr<Started> started);
  void announced(std::int32_t pid);
  void ended(std::int32_t pid);
  void tellOfEnd(const Started& started, std::optional<int> status);
  void complain(const std::string& what);
  [[nodiscard]] Starteds::const_iterator find(std::int32_t pid) const;
  [[nodiscard]] std::filesystem::path recordOf(const ApplicationPackage& package) const;
  void writeRecord(const std::filesystem::path& record, const LaunchStarts& starts);

  const DesktopConfiguration configuration_;
  const RuntimeFolder& folder_;
  RunLoop& runLoop_;
  ProcessRegistry& registry_;
  quorvane::LogSink& log_;
  Starteds started_;  ///< they live
  std::unique_ptr<Registration> launches_;
  std::int32_t awaited_ = 0;  ///< 0: none
  bool launched_ = false;
  std::string trouble_;
};

}  // namespace quorvane::desktop
