// What the stand-in knows of words: the user's files, dictionaries, the corrector.

#include <iostream>

#include "tools/checker/Checker.h"

namespace quorvane::checker {

void Checker::readUsersFiles(const std::filesystem::path& support) {
  makeUserFolders(support, host_.log());
  users_.emplace(support, instance_.platform().textEncoding, host_.log());
  users_->read();
}

/// The trial also makes the spell checker load what it loads at its first suggestion.
void Checker::trySpelling() {
  if (spelling_ != nullptr && spelling_->suggestions("recieve").empty()) spelling_.reset();
  if (spelling_ == nullptr) {
    std::cerr << "quorvane checker: Enchant has no dictionary for " << options_.dictionary
              << " (for en_US, Debian's hunspell-en-us or aspell-en): typing goes on unchecked\n";
    return;
  }
  spelling_ = std::make_unique<SpellingWithWords>(std::move(spelling_), users_->words());
  ToolRecord(segments_.tool).put(At::AppReady, 1);
}

/// Word data is English. The trial loads what a first word in question would have to wait for.
void Checker::loadCorrections(const std::filesystem::path& configDirectory) {
  Platform& platform = instance_.platform();
  std::unique_ptr<corrections::Corrector> corrector;
  if (isEnglish(options_.dictionary)) corrector = corrections::Corrector::open(platform);
  if (corrector == nullptr) {
    std::cerr << "quorvane checker: no word data for " << options_.dictionary
              << " (scripts/word_data makes that for English): nothing is corrected by itself\n";
  } else if (!corrections::Corrector::indexIsKept(platform)) {
    std::cerr << "quorvane checker: the index of words can't be written to "
              << platform.fileManager.cachesDirectory() << ": each start makes it anew\n";
  }
  corrections_.emplace(*spelling_, std::move(corrector), TakenBack(configDirectory, host_.log()),
                       correctionSwitches_, [this] { return host_.keyboardLayout(); });
  corrections_->offers({.spelt = "recieve"});
}

}  // namespace quorvane::checker
