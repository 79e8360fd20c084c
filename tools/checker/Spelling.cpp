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

class Enchant : public Spelling {
 public:
  Enchant(Broker broker, Dictionary dictionary)
      : broker_(std::move(broker)), dictionary_(std::move(dictionary)) {}

  /// What can't be looked up passes for right, so that nothing is changed.
  bool accepts(const std::string& word) override {
    return enchant_dict_check(dictionary_.get(), word.data(), static_cast<ssize_t>(word.size())) <=
           0;
  }

  std::vector<std::string> suggestions(const std::string& word) override {
    std::size_t count = 0;
    char** list = enchant_dict_suggest(dictionary_.get(), word.data(),
                                       static_cast<ssize_t>(word.size()), &count);
    if (list == nullptr) return {};
    std::vector<std::string> all(list, list + count);
    enchant_dict_free_string_list(dictionary_.get(), list);
    return all;
  }

 private:
  Broker broker_;
  Dictionary dictionary_;  // goes before its broker
};

}  // namespace

std::unique_ptr<Spelling> openEnchant(const std::string& tag) {
  Broker broker(enchant_broker_init());
  if (broker == nullptr) return nullptr;
  // Aspell suggests in under a millisecond, Hunspell in ten to forty, and a fix that is late is
  // lost.
  enchant_broker_set_ordering(broker.get(), tag.c_str(), "aspell,hunspell");
  Dictionary dictionary(enchant_broker_request_dict(broker.get(), tag.c_str()),
                        DictionaryDeleter{broker.get()});
  if (dictionary == nullptr) return nullptr;
  return std::make_unique<Enchant>(std::move(broker), std::move(dictionary));
}

}  // namespace quorvane::checker
