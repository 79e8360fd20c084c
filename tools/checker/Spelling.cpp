#include "tools/checker/Spelling.h"

#include <enchant.h>

#include <utility>

namespace quorvane::checker {

namespace {

struct BrokerDeleter {
  void operator()(EnchantBroker* broker) const { enchant_broker_free(broker); }
};
using Broker = std::unique_ptr<EnchantBroker, BrokerDeleter>;

struct DictionaryDeleter {
  EnchantBroker* broker;
  void operator()(EnchantDict* dictionary) const { enchant_broker_free_dict(broker, dictionary); }
};
using Dictionary = std::unique_ptr<EnchantDict, DictionaryDeleter>;

Dictionary openDictionary(const Broker& broker, const std::string& tag) {
  return {enchant_broker_request_dict(broker.get(), tag.c_str()), DictionaryDeleter{broker.get()}};
}

/// Enchant's Aspell keeps up to 18 kB of each suggestion until its dictionary is closed. Opening it
/// anew takes less than a millisecond.
constexpr unsigned kSuggestionsOfOneDictionary = 256;

class Enchant : public Spelling {
 public:
  Enchant(Broker broker, Dictionary dictionary, std::string tag)
      : broker_(std::move(broker)), dictionary_(std::move(dictionary)), tag_(std::move(tag)) {}

  /// What can't be looked up passes for right, so that nothing is changed.
  bool accepts(const std::string& word) override {
    return dictionary_ == nullptr || enchant_dict_check(dictionary_.get(), word.data(),
                                                        static_cast<ssize_t>(word.size())) <= 0;
  }

  std::vector<std::string> suggestions(const std::string& word) override {
    if (++suggestions_ % kSuggestionsOfOneDictionary == 0) reopen();
    if (dictionary_ == nullptr) return {};
    std::size_t count = 0;
    char** list = enchant_dict_suggest(dictionary_.get(), word.data(),
                                       static_cast<ssize_t>(word.size()), &count);
    if (list == nullptr) return {};
    std::vector<std::string> all(list, list + count);
    enchant_dict_free_string_list(dictionary_.get(), list);
    return all;
  }

 private:
  /// The broker gives the same dictionary again for as long as anybody holds it.
  void reopen() {
    dictionary_.reset();
    dictionary_ = openDictionary(broker_, tag_);
  }

  Broker broker_;
  Dictionary dictionary_;  // goes before its broker
  std::string tag_;
  unsigned suggestions_ = 0;
};

}  // namespace

std::unique_ptr<Spelling> openEnchant(const std::string& tag) {
  Broker broker(enchant_broker_init());
  if (broker == nullptr) return nullptr;
  // Aspell suggests in under a millisecond, Hunspell in ten to forty, and a fix that is late is
  // lost.
  enchant_broker_set_ordering(broker.get(), tag.c_str(), "aspell,hunspell");
  Dictionary dictionary = openDictionary(broker, tag);
  if (dictionary == nullptr) return nullptr;
  return std::make_unique<Enchant>(std::move(broker), std::move(dictionary), tag);
}

}  // namespace quorvane::checker
