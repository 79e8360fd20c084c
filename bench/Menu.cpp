#include "bench/Menu.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "hosts/resources/AppleDouble.h"
#include "hosts/resources/ResourceFork.h"
#include "src/menu/InputMenu.h"
#include "src/menu/QBIM_AutoType_IMK.h"
#include "src/menu/QBIM_SpellMenu_IMK.h"
#include "tools/parameters/ParameterFile.h"

namespace quorvane::bench {
namespace {

constexpr std::size_t kDictionaries = 999;  // no more have an item
constexpr std::size_t kAbbreviations = 10;

Instance& (*method)() = nullptr;

std::filesystem::path folderOf(std::string_view name) {
  const std::filesystem::path support = std::getenv("QUORVANE_DATA_DIR");
  return support / parameters::kFolder / "Quorvane Dictionaries" / name;
}

/// As the main application writes it: a file, its kind and its switch.
void makeFile(const std::string& path, resources::FinderInfo info) {
  resources::ResourceFork fork;
  fork.at("cswt"_4cc, 0).data = {1};
  resources::AppleDouble around;
  around.setFinderInfo(info);
  around.contentOf(resources::kResourceForkEntry) = *resources::writeResourceFork(fork).value;
  const auto bytes = resources::writeAppleDouble(around).value;
  std::ofstream{path};
  std::ofstream(resources::appleDoublePath(path))
      .write(reinterpret_cast<const char*>(bytes->data()),
             static_cast<std::streamsize>(bytes->size()));
}

void makeFiles(std::string_view folder, std::size_t count, resources::FinderInfo info) {
  const auto path = folderOf(folder);
  std::filesystem::create_directories(path);
  for (std::size_t i = 0; i < count; ++i) {
    makeFile(path / ("Dictionary " + std::to_string(i) + "_user"), info);
  }
}

void bareStatOfFolder(benchmark::State& state) {
  const std::string folder = folderOf("Spelling");
  struct stat status {};
  for (auto step : state) {
    if (::stat(folder.c_str(), &status) != 0) std::abort();
  }
}

void spellingFirst(benchmark::State& state) {
  for (auto step : state) {
    method().state<SpellMenuState>() = {};
    RemoveAll_SubMenu_Items(method(), "SpLg"_4cc);
    MSPELLCreateMenu(method(), 0);
  }
  if (SubMenu_Count(method(), "SpLg"_4cc) != kDictionaries) std::abort();
}

void spellingUnchanged(benchmark::State& state) {
  if (MSPELLCreateMenu(method(), 0) != kDictionaries) MSPELLCreateMenu(method(), 0);
  for (auto step : state) MSPELLCreateMenu(method(), 0);
}

void autoTypeUnchanged(benchmark::State& state) {
  Get_AutoType_Menu(method(), 0);
  for (auto step : state) Get_AutoType_Menu(method(), 0);
  if (SubMenu_Count(method(), "ATyp"_4cc) != kAbbreviations) std::abort();
}

}  // namespace

void registerMenu(Instance& (*instance)()) {
  method = instance;
  makeFiles("Spelling", kDictionaries + 1, {"QDXC"_4cc, "QVKT"_4cc});
  makeFiles("AutoType", kAbbreviations, {"TEXT"_4cc, "QVKE"_4cc});
  using Measured = std::pair<const char*, void (*)(benchmark::State&)>;
  for (const auto& [name, function] :
       {Measured("bareStatOfFolder", bareStatOfFolder), Measured("spellingFirst", spellingFirst),
        Measured("spellingUnchanged", spellingUnchanged),
        Measured("autoTypeUnchanged", autoTypeUnchanged)}) {
    benchmark::RegisterBenchmark(name, function)->MinTime(0.1)->Repetitions(15);
  }
}

void printMenu(const Ratios& ratios) {
  ratios.printTime("menu-first-build", "spellingFirst", 1e9);
  ratios.print("menu-unchanged", "spellingUnchanged", "bareStatOfFolder", 3);
  ratios.printTime("menu-abbreviations-unchanged", "autoTypeUnchanged", 1e7);
}

}  // namespace quorvane::bench
