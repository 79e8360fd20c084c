#include "tools/manual/Completions.h"

#include <sstream>

#include "tools/manual/CommandTree.h"

namespace quorvane::manual {
namespace {

/// In single quotes; `quote` is how the shell writes one within them.
std::string quoted(const std::string& text, const std::string& quote) {
  std::string result = "'";
  for (const char each : text) result += each == '\'' ? quote : std::string(1, each);
  return result + "'";
}

std::string forShell(const std::string& text) { return quoted(text, "'\\''"); }

/// The command line up to the word being typed becomes `place`. `words` are those before that one.
void writePlaceSearch(std::ostream& out, const std::vector<Place>& places,
                      const std::string& words) {
  out << "  for word in " << words << "; do\n    case \"$place $word\" in\n      ";
  std::string patterns;
  for (const Place& each : places) {
    if (!each.path.empty()) patterns += (patterns.empty() ? "" : "|") + forShell(" " + each.path);
  }
  out << patterns << ") place=\"$place $word\" ;;\n    esac\n  done\n";
}

template <class Text>
void writePlaces(std::ostream& out, const std::vector<Place>& places, const std::string& variable,
                 Text text) {
  out << "  case \"$place\" in\n";
  for (const Place& place : places) {
    out << "    " << forShell(place.path.empty() ? "" : " " + place.path) << ") " << variable
        << "=(";
    for (const Word& word : place.words) out << "\n      " << forShell(text(word));
    out << ") ;;\n";
  }
  out << "  esac\n";
}

/// _describe parts a word from its description by a colon.
std::string zshText(const Word& word) {
  std::string name;
  for (const char each : word.name) name += each == ':' ? std::string("\\:") : std::string(1, each);
  return name + ":" + word.description;
}

std::string fishCondition(const std::string& path) {
  std::istringstream words(path);
  std::string condition;
  for (std::string word; words >> word;) {
    condition += (condition.empty() ? "" : "; and ") + ("__fish_seen_subcommand_from " + word);
  }
  return condition.empty() ? "__fish_use_subcommand" : condition;
}

void writeFishWord(std::ostream& out, const std::string& program, const Place& place,
                   const Word& word) {
  out << "complete -c " << program << " -n " << forShell(fishCondition(place.path));
  if (!word.isOption) {
    out << " -f -a " << word.name;
  } else if (word.name.starts_with("--")) {
    out << " -l " << word.name.substr(2);
  } else {
    out << " -s " << word.name.substr(1);
  }
  out << " -d " << quoted(word.description, "\\'") << '\n';
}

}  // namespace

std::string bashCompletion(const CLI::App& program) {
  const auto places = placesOf(program);
  std::ostringstream out;
  const std::string& name = program.get_name();
  out << "_" << name << "() {\n  local word place='' words=()\n";
  writePlaceSearch(out, places, "\"${COMP_WORDS[@]:1:COMP_CWORD-1}\"");
  writePlaces(out, places, "words", [](const Word& word) { return word.name; });
  out << "  mapfile -t COMPREPLY < <(compgen -W \"${words[*]}\" -- \"${COMP_WORDS[COMP_CWORD]}\")\n"
      << "}\ncomplete -o default -F _" << name << ' ' << name << '\n';
  return out.str();
}

std::string zshCompletion(const CLI::App& program) {
  const auto places = placesOf(program);
  std::ostringstream out;
  out << "#compdef " << program.get_name() << "\nlocal word place=''\nlocal -a choices\n";
  writePlaceSearch(out, places, "${words[2,CURRENT-1]}");
  writePlaces(out, places, "choices", zshText);
  out << "_describe " << program.get_name() << " choices || _files\n";
  return out.str();
}

std::string fishCompletion(const CLI::App& program) {
  std::ostringstream out;
  for (const Place& place : placesOf(program)) {
    for (const Word& word : place.words) writeFishWord(out, program.get_name(), place, word);
  }
  return out.str();
}

}  // namespace quorvane::manual
