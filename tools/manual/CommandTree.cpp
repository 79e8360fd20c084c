#include "tools/manual/CommandTree.h"

namespace quorvane::manual {
namespace {

void addOption(const CLI::Option& option, std::vector<Word>& words) {
  const std::string summary = summaryOf(option.get_description());
  for (const std::string& name : option.get_lnames()) words.push_back({"--" + name, summary, true});
  for (const std::string& name : option.get_snames()) words.push_back({"-" + name, summary, true});
}

void addPlaces(const CLI::App& command, const std::string& path, std::vector<Place>& places) {
  Place place{path, {}};
  for (const CLI::App* const each : commandsOf(command)) {
    place.words.push_back({each->get_name(), summaryOf(each->get_description()), false});
  }
  for (const CLI::Option* const each : optionsOf(command)) addOption(*each, place.words);
  places.push_back(std::move(place));
  const std::string prefix = path.empty() ? path : path + " ";
  for (const CLI::App* const each : commandsOf(command)) {
    addPlaces(*each, prefix + each->get_name(), places);
  }
}

}  // namespace

std::vector<const CLI::App*> commandsOf(const CLI::App& command) {
  return command.get_subcommands(
      [](const CLI::App* each) { return !each->get_group().empty() && !each->get_name().empty(); });
}

std::vector<const CLI::Option*> optionsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* each) { return !each->get_group().empty(); });
}

std::vector<Place> placesOf(const CLI::App& program) {
  std::vector<Place> places;
  addPlaces(program, {}, places);
  return places;
}

std::string summaryOf(const std::string& description) {
  const std::size_t end = description.find(". ");
  std::string summary = description.substr(0, end);
  if (summary.ends_with('.')) summary.pop_back();
  return summary;
}

}  // namespace quorvane::manual
