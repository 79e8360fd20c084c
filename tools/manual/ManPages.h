#pragma once
// Pages of the manual, in troff.

#include <map>
#include <string>

namespace CLI {
class App;
}

namespace quorvane::manual {

/// By file name: one of the program and one of each of its commands.
std::map<std::string, std::string> manPages(const CLI::App& program, const std::string& version);

}  // namespace quorvane::manual
