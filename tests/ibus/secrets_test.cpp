// What is typed into fields for secrets is kept nowhere: no process of ours has it in its memory
// afterwards, no shared segment and no file.

#include <fcntl.h>
#include <sys/shm.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <thread>

#include "tests/ibus/ServedDesktop.h"

namespace quorvane::tests {
namespace {

constexpr const char* kSecret = "zvqkwxjpzh";
constexpr const char* kPlain = "plainlyseen ";

/// As bytes, and as UTF-16 and UTF-32 have it.
std::vector<std::string> formsOf(const std::string& word) {
  std::vector<std::string> forms{word};
  for (const std::size_t zeros : {1U, 3U}) {
    std::string& form = forms.emplace_back();
    for (const char c : word) form.append(1, c).append(zeros, '\0');
  }
  return forms;
}

bool hasWord(std::string_view bytes, const std::string& word) {
  return std::ranges::any_of(formsOf(word), [&](const std::string& form) {
    return bytes.find(form) != std::string_view::npos;
  });
}

/// Parts of a process's memory that have the word.
std::string placesIn(pid_t pid, const std::string& word) {
  const std::string process = "/proc/" + std::to_string(pid);
  const int memory = ::open((process + "/mem").c_str(), O_RDONLY | O_CLOEXEC);
  if (memory < 0) throw std::runtime_error("no look into " + process);
  std::ifstream parts(process + "/maps");
  std::string found;
  for (std::string line; std::getline(parts, line);) {
    std::size_t from = 0, to = 0;
    if (std::sscanf(line.c_str(), "%zx-%zx r", &from, &to) != 2) continue;
    std::string bytes(to - from, '\0');
    const ssize_t size = ::pread(memory, bytes.data(), bytes.size(), static_cast<off_t>(from));
    if (size > 0 && hasWord({bytes.data(), static_cast<std::size_t>(size)}, word)) {
      found += std::to_string(pid) + ": " + line + '\n';
    }
  }
  ::close(memory);
  return found;
}

class Secrets : public ServedDesktop {
 protected:
  std::string places(const std::string& word) {
    std::string found;
    for (const auto& each : std::filesystem::directory_iterator(runtimeFolder())) {
      if (each.path().extension() == ".process")
        found += placesIn(std::stoi(each.path().stem()), word);
    }
    if (desktop().engine() != 0) found += placesIn(desktop().engine(), word);
    return found + segmentsWith(word) + filesWith(word);
  }

 private:
  static std::string segmentsWith(const std::string& word) {
    std::string found;
    for (const int key : {880, 893, 896, 897, 899}) {
      const int id = ::shmget(static_cast<key_t>(keyOffset()) + key, 0, 0);
      shmid_ds facts{};
      if (id < 0 || ::shmctl(id, IPC_STAT, &facts) != 0) continue;
      void* const bytes = ::shmat(id, nullptr, SHM_RDONLY);
      if (hasWord({static_cast<const char*>(bytes), facts.shm_segsz}, word)) found += "segment\n";
      ::shmdt(bytes);
    }
    return found;
  }
  std::string filesWith(const std::string& word) {
    std::string found;
    for (const auto& each : std::filesystem::recursive_directory_iterator(desktop().file(""))) {
      if (each.path().string().find("/profile") != std::string::npos) continue;  // the browser's
      if (each.is_regular_file() && hasWord(contentOf(each.path()), word)) {
        found += each.path().string() + '\n';
      }
    }
    return found;
  }
};

TEST_F(Secrets, OfGtkAreKeptNowhere) {
  for (const auto& [version, secret] :
       {std::pair{3, "hidden"}, std::pair{3, "purpose"}, std::pair{4, "password"}}) {
    for (const int first : {0, 1}) {
      start(true, QUORVANE_PROGRAM " server --ibus --log --show-private");
      GtkClient client(desktop(), version,
                       first == 0 ? std::vector<std::string>{"entry", secret}
                                  : std::vector<std::string>{secret, "entry"});
      screen().focus(client.window());
      std::array<std::string, 2> texts;
      for (const int field : {0, 1, 0, 1, first}) {
        client.send("focus " + std::to_string(field));
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        screen().press("End");
        const char* const typed = field == first ? kPlain : kSecret;
        screen().type(typed);
        EXPECT_TRUE(client.shows(texts.at(static_cast<std::size_t>(field)) += typed, field));
      }
      EXPECT_NE(places("plainlyseen"), "");
      EXPECT_EQ(places(kSecret), "") << version << secret << first;
    }
  }
}

}  // namespace
}  // namespace quorvane::tests
