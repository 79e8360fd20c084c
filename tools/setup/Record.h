#pragma once
// What a setup has done, so that it can be taken back: a settings file of ours, one group for each
// change, written before the change is made. Whoever takes one back looks whether it still stands.

#include <filesystem>
#include <map>
#include <string>

#include "hosts/desktop/KeyFile.h"
#include "tools/setup/Report.h"

namespace quorvane::setup {

class Record {
 public:
  /// `report` outlives this and gets what goes wrong.
  Record(std::filesystem::path file, Report& report);

  [[nodiscard]] bool has(const std::string& change) const;
  [[nodiscard]] std::string text(const std::string& change, const std::string& key) const;
  /// False where it can't be kept: the change must not be made then.
  bool keep(const std::string& change, const std::map<std::string, std::string>& values);
  /// The file goes with the last one, and its folder where nothing else lies in it.
  void forget(const std::string& change);

 private:
  struct Problems final : LogSink {
    explicit Problems(Report& to) : report(to) {}
    void writeLine(std::string_view line) override { report.problems.emplace_back(line); }
    Report& report;
  };

  std::filesystem::path path_;
  Problems problems_;
  desktop::KeyFile file_;
};

}  // namespace quorvane::setup
