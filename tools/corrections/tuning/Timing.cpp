#include "tools/corrections/tuning/Timing.h"

#include <fstream>
#include <iostream>
#include <random>
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

std::string randomText(std::mt19937& random, int lowest, int highest) {
  std::string text(random() % 40, ' ');
  std::uniform_int_distribution<int> byte(lowest, highest);
  for (char& c : text) c = static_cast<char>(byte(random));
  return text;
}

std::string mixture(std::mt19937& random, const std::string& one, const std::string& other) {
  std::string text = one.substr(0, random() % (one.size() + 1)) + other;
  for (auto slips = random() % 4; slips > 0 && !text.empty(); --slips) {
    text[random() % text.size()] = static_cast<char>('a' + random() % 26);
  }
  return text;
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

void addRandomWords(std::vector<std::string>& words, std::size_t count) {
  std::mt19937 random(1);
  const std::size_t known = words.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (known == 0 || i % 3 == 0) {
      words.push_back(i % 2 == 0 ? randomText(random, 'a', 'z') : randomText(random, -128, 127));
    } else {
      words.push_back(mixture(random, words[random() % known], words[random() % known]));
    }
  }
}

}  // namespace quorvane::corrections
