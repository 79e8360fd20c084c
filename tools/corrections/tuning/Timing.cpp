#include "tools/corrections/tuning/Timing.h"

#include <fstream>
#include <iostream>
#include <sstream>

#include "tools/support/Times.h"

namespace quorvane::corrections {

namespace {

/// kB of the mapped snapshot that this process has touched.
std::size_t residentIndex() {
  std::ifstream maps("/proc/self/smaps");
  bool inIndex = false;
  for (std::string line; std::getline(maps, line);) {
    if (line.ends_with("corrections.snapshot")) inIndex = true;
    if (!inIndex || !line.starts_with("Rss:")) continue;
    std::istringstream number(line.substr(4));
    std::size_t kilobytes = 0;
    number >> kilobytes;
    return kilobytes;
  }
  return 0;
}

}  // namespace

void tellCosts(const std::vector<std::string>& words,
               const std::function<void(const std::string&)>& judge) {
  Times times;
  for (const std::string& word : words) {
    times.measure([&] { judge(word); });
  }
  std::cout << "decision: " << times.summary() << "\nindex: " << residentIndex()
            << " kB resident\n";
}

}  // namespace quorvane::corrections
