#include "tools/scenario/CompletionData.h"

namespace quorvane::scenario {
namespace {

std::string json(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c == '\n' ? "\\n" : std::string(1, c);
  }
  return result + '"';
}

std::string json(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : ",") + json(text);
  return '[' + result + ']';
}

std::string json(const WordEntry& entry) {
  return "{\"frequency\":" + std::to_string(entry.frequency) +
         ",\"translation\":" + json(entry.translation) + ",\"ipa\":" + json(entry.ipa) + '}';
}

template <class Value>
std::string json(const std::map<std::string, Value>& members) {
  std::string result;
  for (const auto& [key, value] : members) {
    result += (result.empty() ? "" : ",") + json(key) + ':' + json(value);
  }
  return '{' + result + '}';
}

// Short enough to work out by eye: a word's first letter and its length.
constexpr std::string_view kScript =
    "function phonex(word) { return word.charAt(0) + word.length; }";

}  // namespace

void CompletionData::writeWords(memory::MemoryHost& host) const {
  host.bundle.setWordList(std::vector<std::string_view>(list.begin(), list.end()));
  host.bundle.put("frequency_and_ipa.json", json(entries));
}

void CompletionData::writeSoundCodes(memory::MemoryHost& host) const {
  host.bundle.put("phonex_encoded_words.json", json(sounding));
  host.bundle.put("phonex.js", kScript);
}

void CompletionData::writeExpansions(memory::MemoryHost& host) const {
  host.files.put(userFile(host), json(expansions));
}

std::string userFile(memory::MemoryHost& host) {
  return host.files.homeDirectory + "/.you_expand_me.json";
}

}  // namespace quorvane::scenario
