#pragma once
// The dictionary's files with the senses that a test gives them.

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "tests/word_data/SourceFolder.h"

namespace quorvane::word_data {

struct SmallWordNet {
  void add(const std::string& part, const std::string& word,
           const std::vector<std::string>& glosses, const std::string& pointer = "") {
    index[part] += word + " x " + std::to_string(glosses.size());
    for (const std::string& gloss : glosses) {
      char offset[9];
      std::snprintf(offset, sizeof offset, "%08zu", data[part].size());
      index[part] += std::string(" ") + offset;
      data[part] +=
          std::string(offset) + " 00 x 01 " + word + " 0 001 " + pointer + " | " + gloss + "\n";
    }
    index[part] += '\n';
  }

  void write(const SourceFolder& folder, const std::string& place = "") {
    for (const std::string part : {"noun", "verb", "adj", "adv"}) {
      folder.write(place + "index." + part, "  1 a licence\n" + index[part]);
      folder.write(place + "data." + part, data[part]);
      folder.write(place + part + ".exc", part == "verb" ? exceptions : "");
    }
    folder.write(place + "cntlist.rev", counts);
  }

  std::map<std::string, std::string> index;
  std::map<std::string, std::string> data;
  std::string counts;
  std::string exceptions;  ///< of verbs
};

}  // namespace quorvane::word_data
