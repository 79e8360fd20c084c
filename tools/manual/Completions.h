#pragma once
// What shells complete behind the program's name: its commands and options, else files.

#include <string>

namespace CLI {
class App;
}

namespace quorvane::manual {

std::string bashCompletion(const CLI::App& program);
std::string zshCompletion(const CLI::App& program);
std::string fishCompletion(const CLI::App& program);

}  // namespace quorvane::manual
