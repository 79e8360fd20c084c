#pragma once
// The lines that count: `ratio NAME VALUE goal <= 1.15`, from medians of interleaved repetitions.

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace quorvane::bench {

/// Prints the usual table, and keeps the time per iteration of every repetition.
class Ratios : public benchmark::ConsoleReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Median of `measured` over median of `base`; nothing where one of them didn't run.
  void print(const std::string& name, const std::string& measured, const std::string& base,
             double goal) const;
  static void printValue(const std::string& name, double value, double goal);
  /// Median in nanoseconds against a limit.
  void printTime(const std::string& name, const std::string& measured, double goal) const;

 private:
  [[nodiscard]] double median(const std::string& benchmark) const;

  std::map<std::string, std::vector<double>> nanoseconds_;
};

}  // namespace quorvane::bench
