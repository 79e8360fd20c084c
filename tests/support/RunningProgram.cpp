#include "tests/support/RunningProgram.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace quorvane::tests {
namespace {

void redirect(const std::filesystem::path& file, int flags, int descriptor) {
  const int opened = ::open(file.c_str(), flags, 0600);
  if (opened < 0) ::_exit(126);
  ::dup2(opened, descriptor);
}

bool isOf(const std::filesystem::path& entry, std::string_view signature) {
  return entry.extension() == ".process" &&
         contentOf(entry).find("\nsignature=" + std::string(signature) + '\n') != std::string::npos;
}

}  // namespace

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (const std::string& text : texts) result.push_back(const_cast<char*>(text.c_str()));
  result.push_back(nullptr);
  return result;
}

bool isPartlyRight(const std::string& text, const std::string& typed, const std::string& right) {
  std::istringstream words(text), typedWords(typed), rightWords(right);
  std::string word, typedWord, rightWord;
  while (typedWords >> typedWord && rightWords >> rightWord) {
    if (!(words >> word) || (word != typedWord && word != rightWord)) return false;
  }
  return !(words >> word) && std::ranges::count(text, ' ') == std::ranges::count(typed, ' ');
}

std::string typedUntilRight(const OwnFolder& folder, const Start& start, const std::string& right) {
  std::string text;
  for (int i = 0; i < 5; ++i) {
    RunningProgram program(folder, start);
    if (const int code = program.wait(); code != 0) return "exit code " + std::to_string(code);
    text = program.output();
    if (text == right || !isPartlyRight(text, start.input, right)) break;
  }
  return text;
}

std::string contentOf(const std::filesystem::path& file) {
  std::ostringstream content;
  content << std::ifstream(file, std::ios::binary).rdbuf();
  return content.str();
}

std::size_t announcementsIn(const std::filesystem::path& folder) {
  std::error_code error;
  const std::filesystem::directory_iterator entries(folder, error);
  return static_cast<std::size_t>(
      std::count_if(begin(entries), end(entries), [](const auto& entry) {
        return entry.path().extension() == ".process" && !isOf(entry, "QVUI") &&
               !isOf(entry, "QVKS");
      }));
}

pid_t announced(const std::filesystem::path& folder, std::string_view signature) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (isOf(entry, signature)) return std::stoi(entry.path().stem());
  }
  return 0;
}

void pauseShortly() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

OwnFolder::OwnFolder() {
  std::string name = "/tmp/qvXXXXXX";
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the test");
  path_ = name;
}

OwnFolder::~OwnFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::vector<std::string> OwnFolder::environment() const {
  return {"XDG_RUNTIME_DIR=" + path_.string(), "XDG_CONFIG_HOME=" + (path_ / "config").string(),
          "HOME=" + path_.string(),
          // The words of completion and corrections are made ready once for all tests.
          "XDG_CACHE_HOME=" QUORVANE_SOURCE_DIR "/build/test-cache", "PATH=/usr/bin:/bin",
          "LC_ALL=C.UTF-8"};
}

RunningProgram::RunningProgram(const OwnFolder& folder, const Start& start) {
  static std::atomic<int> number = 0;
  const std::string name = "program" + std::to_string(number++);
  const std::filesystem::path input = folder.path() / (name + ".in");
  outputFile_ =
      start.output.empty() ? folder.path() / (name + ".out") : std::filesystem::path(start.output);
  errorFile_ = folder.path() / (name + ".err");
  std::ofstream(input, std::ios::binary) << start.input;

  std::vector<std::string> arguments{QUORVANE_PROGRAM};
  arguments.insert(arguments.end(), start.arguments.begin(), start.arguments.end());
  std::vector<std::string> variables = start.variables;  // the first of a name counts
  const auto isOtherWords = [](const std::string& variable) {
    return variable.starts_with("QUORVANE_BUNDLE_DIR=");
  };
  if (std::ranges::any_of(variables, isOtherWords)) {
    variables.push_back("XDG_CACHE_HOME=" + (folder.path() / "cache").string());
  }
  std::ranges::copy(folder.environment(), std::back_inserter(variables));
  const std::vector<char*> argv = pointersTo(arguments);
  const std::vector<char*> envp = pointersTo(variables);
  pid_ = ::fork();
  if (pid_ < 0) throw std::runtime_error("can't fork");
  if (pid_ > 0) return;
  redirect(input, O_RDONLY, STDIN_FILENO);
  redirect(outputFile_, O_WRONLY | O_CREAT, STDOUT_FILENO);
  redirect(errorFile_, O_WRONLY | O_CREAT | O_APPEND, STDERR_FILENO);
  ::execve(argv.front(), argv.data(), envp.data());
  ::_exit(127);
}

RunningProgram::~RunningProgram() {
  if (ended_) return;
  ::kill(pid_, SIGKILL);
  ::waitpid(pid_, nullptr, 0);
}

void RunningProgram::signal(int number) const { ::kill(pid_, number); }

int RunningProgram::wait() {
  int status = 0;
  if (!eventually([&] { return ::waitpid(pid_, &status, WNOHANG) != 0; })) return -1;
  ended_ = true;
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::string RunningProgram::output() const { return contentOf(outputFile_); }
std::string RunningProgram::errors() const { return contentOf(errorFile_); }

}  // namespace quorvane::tests
