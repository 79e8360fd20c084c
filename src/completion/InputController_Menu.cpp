// What the controller does for the Input Menu: an item's action becomes a command.

#include <algorithm>

#include "src/base/Log.h"
#include "src/completion/InputController.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuCommand.h"

namespace quorvane {
namespace {

constexpr std::string_view kPreferencesPage = "http://localhost:62718/index.html";
constexpr std::string_view kBrowser = "com.apple.Safari";
constexpr std::uint32_t kLaunchWithoutWaiting = 0x10000;

// How a command is run. The number is the row's command.
using Entry = void (*)(Instance& instance, std::uint32_t commandID,
                       const IMKCommandDictionary& sender);

void main(Instance& instance, std::uint32_t commandID, const IMKCommandDictionary& /*sender*/) {
  do_QorvMain_Do_Menu_Tool_CommandID(instance, commandID);
}

void plain(Instance& instance, std::uint32_t commandID, const IMKCommandDictionary& /*sender*/) {
  do_Qorv_Do_Menu_Tool_CommandID(instance, commandID);
}

// Of an item whose tag and command are one number.
void byTag(Instance& instance, std::uint32_t /*none*/, const IMKCommandDictionary& sender) {
  const NSMenuItem* const item = sender.IMKCommandMenuItem;
  if (item == nullptr) return;
  do_Qorv_Do_Menu_Tool_CommandID(instance, static_cast<std::uint32_t>(item->tag));
}

void generic(Instance& instance, std::uint32_t /*none*/, const IMKCommandDictionary& sender) {
  SubMenuActions(instance, sender);
}

void cleanup(Instance& instance, std::uint32_t /*none*/, const IMKCommandDictionary& /*sender*/) {
  Log(instance, "TextCleanupAction");
}

void preferences(Instance& instance, std::uint32_t /*none*/,
                 const IMKCommandDictionary& /*sender*/) {
  get_InputController_ptr(instance).showIMEPreferences(nullptr);
}

void nothing(Instance& /*process*/, std::uint32_t /*none*/,
             const IMKCommandDictionary& /*sender*/) {}

struct ActionRow {
  std::string_view selector;
  Entry enter;
  std::uint32_t commandID = 0;
};
constexpr std::array<ActionRow, 23> kActions{{
    {kSubMenuActions, generic},
    {"AutoMarkupAll:", main, "CkMk"_4cc},
    {"CheckAll:", main, "CkAl"_4cc},
    {"CheckSelectionSubmenu:", nothing},
    {"CheckSpelling:", plain, "CkSp"_4cc},
    {"CheckGrammar:", plain, "CkSe"_4cc},
    {"CheckSpellingandGrammar:", plain, "CkSb"_4cc},
    {"InteractiveCheckSubmenu:", nothing},
    {"ShowSuggestionsAction:", main, "ShSg"_4cc},
    {"CurrentWritingRulesSubAction:", byTag},
    {"CurrentSpellingSubAction:", byTag},
    {"CurrentAutoTypeSubAction:", byTag},
    {"DictLookupAction:", plain, "LkUp"_4cc},
    {"TextCleanupAction:", cleanup},
    {"CheckStatisticsAction:", main, "CkRd"_4cc},
    {"GraphStatisticsAction:", main, "Grph"_4cc},
    {"WritingRulesAction:", main, "GtWr"_4cc},
    {"PreferencesAction:", main, "GtMs"_4cc},
    {"AboutQuorvaneAction:", main, "GtAb"_4cc},
    {"HelpQuorvaneAction:", main, "GtHp"_4cc},
    {"QuitQuorvaneAction:", main, "QtOp"_4cc},
    {"clickAbout:", nothing},
    {"showIMEPreferences:", preferences},
}};

}  // namespace

NSMenu* InputController::menu() { return Quorvane_InputAppDelegate_menu(instance_); }

void InputController::doCommandBySelectorCommandDictionary(
    std::string_view selector, const IMKCommandDictionary& infoDictionary) {
  const auto* action = std::ranges::find(kActions, selector, &ActionRow::selector);
  if (action != kActions.end()) action->enter(instance_, action->commandID, infoDictionary);
}

void InputController::SubMenuActions(const IMKCommandDictionary& sender) {
  quorvane::SubMenuActions(instance_, sender);
}

void InputController::Set_SubMenuActions(const void* sender, NSMenuItem& item) {
  do_Set_SubMenuActions(sender, item);
}

void InputController::showIMEPreferences(const void* /*sender*/) {
  openUrl(std::string(kPreferencesPage));
}

void InputController::openUrl(const std::string& address) {
  instance_.platform().workspace.openURLs(address, kBrowser, kLaunchWithoutWaiting);
}

}  // namespace quorvane
