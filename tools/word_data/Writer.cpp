#include "tools/word_data/Writer.h"

#include <marisa.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "hosts/marisa/SavedWordList.h"

namespace quorvane::word_data {
namespace {

std::string jsonArray(std::span<const std::string> texts) {
  std::string json = "[";
  for (const std::string& text : texts) {
    if (json.size() > 1) json += ',';
    json += jsonString(text);
  }
  return json + ']';
}

// Between the members of an object: nothing before the first.
void separate(std::string& json) {
  if (json.size() > 1) json += ",\n";
}

}  // namespace

std::string jsonString(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      json.append({'\\', c});
    } else if (static_cast<unsigned char>(c) < 0x20) {
      std::array<char, 8> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
      json += escape.data();
    } else {
      json += c;
    }
  }
  return json + '"';
}

WordTable wordTable(std::span<const Word> words, const Glosses& glosses,
                    const Pronunciations& pronunciations) {
  WordTable table;
  table.json = "{";
  for (const Word& word : words) {
    const std::vector<std::string> lines = glosses.lines(word.text);
    const std::string ipa = pronunciations.ipa(word.text);
    table.defined += lines.empty() ? 0 : 1;
    table.pronounced += ipa.empty() ? 0 : 1;
    separate(table.json);
    table.json += jsonString(word.text) + ":{\"frequency\":" + std::to_string(word.frequency) +
                  ",\"translation\":" + jsonArray(lines) + ",\"ipa\":" + jsonString(ipa) + '}';
  }
  table.json += "}\n";
  return table;
}

std::string codeTable(const CodeGroups& groups) {
  std::string json = "{";
  for (const auto& [code, words] : groups) {
    separate(json);
    json += jsonString(code) + ':' + jsonArray(words);
  }
  return json + "}\n";
}

std::string sealedTrie(std::span<const Word> words) try {
  std::vector<std::string_view> texts;
  for (const Word& word : words) texts.push_back(word.text);
  return savedWordList(texts);
} catch (const marisa::Exception& error) {
  throw std::runtime_error(std::string("the trie can't be built: ") + error.what());
}

}  // namespace quorvane::word_data
