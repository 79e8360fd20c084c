// Makes the resource file of the bundle, a string list of the lines of a text, and the applications
// that ship with it.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/resources/ResourceFork.h"
#include "tools/applications/ApplicationFolder.h"

namespace quorvane {
namespace {

constexpr FourCharCode kStringList = "STR#"_4cc;
constexpr std::int16_t kMenuStrings = 131;

std::vector<std::string> linesOf(const char* path) {
  std::ifstream text(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  if (lines.empty()) throw std::runtime_error(std::string(path) + " holds no lines");
  return lines;
}

/// A count, then Pascal strings. ASCII alone is the same in Mac OS Roman.
resources::Bytes stringList(const std::vector<std::string>& strings) {
  resources::Bytes list;
  resources::appendNumber(list, static_cast<std::uint16_t>(strings.size()));
  for (const std::string& each : strings) {
    if (each.size() > 255) throw std::runtime_error("a string has more than 255 bytes");
    list.push_back(static_cast<std::uint8_t>(each.size()));
    list.insert(list.end(), each.begin(), each.end());
  }
  return list;
}

void makeResources(const char* strings, const std::filesystem::path& file) {
  resources::ResourceFork fork;
  fork.at(kStringList, kMenuStrings).data = stringList(linesOf(strings));
  const resources::Bytes bytes = resources::writeResourceFork(fork).value.value();
  const std::string_view content(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  std::filesystem::create_directories(file.parent_path());
  if (!desktop::writeFileAtomically(file, content, desktop::Durability::UntilReboot)) {
    throw std::runtime_error("can't write " + file.string());
  }
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  try {
    if (argc != 3) throw std::runtime_error("usage: quorvane_bundle STRINGS FOLDER");
    const std::filesystem::path bundle = argv[2];
    quorvane::applications::putStandIn(bundle / "Applications");
    quorvane::applications::putCompanions(bundle);
    quorvane::makeResources(argv[1], bundle / "Quorvane.rsrc");
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "quorvane_bundle: " << error.what() << '\n';
    return 1;
  }
}
