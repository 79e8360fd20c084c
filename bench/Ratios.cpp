#include "bench/Ratios.h"

#include <algorithm>
#include <cstdio>

namespace quorvane::bench {

bool Ratios::ReportContext(const Context& context) {
  return ConsoleReporter::ReportContext(context);
}

void Ratios::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
    nanoseconds_[run.run_name.function_name].push_back(run.real_accumulated_time * 1e9 /
                                                       static_cast<double>(run.iterations));
  }
}

double Ratios::median(const std::string& benchmark) const {
  const auto found = nanoseconds_.find(benchmark);
  if (found == nanoseconds_.end()) return 0;
  std::vector<double> times = found->second;
  std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2),
                   times.end());
  return times[times.size() / 2];
}

void Ratios::print(const std::string& name, const std::string& measured, const std::string& base,
                   double goal) const {
  const double above = median(measured);
  const double below = median(base);
  if (above > 0 && below > 0) {
    printValue(name, above / below, goal);
  }
}

void Ratios::printValue(const std::string& name, double value, double goal) {
  std::printf("ratio %s %.4g goal <= %g\n", name.c_str(), value, goal);
}

void Ratios::printTime(const std::string& name, const std::string& measured, double goal) const {
  if (const double time = median(measured); time > 0) {
    std::printf("time %s %.0f ns goal < %.0f ns\n", name.c_str(), time, goal);
  }
}

}  // namespace quorvane::bench
