// A family's status for a person and for a program.

#include <array>
#include <sstream>

#include "apps/FamilyStatus.h"
#include "apps/JSONText.h"
#include "apps/SettingsList.h"
#include "hosts/ibus/TextField.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/session/FixGuard.h"

namespace quorvane {
namespace {

using desktop::InputMethodStatus;

struct Role {
  FourCharCode signature;
  std::string_view title;
  std::string_view key;
};
constexpr std::array<Role, 3> kSiblings{
    {{kQuorvaneSignature, "main application", "mainApplication"},
     {"QVUI"_4cc, "server", "server"},
     {"QVKS"_4cc, "Pencil Menu", "pencilMenu"}}};

std::string duration(std::uint64_t seconds) {
  if (seconds < 120) return std::to_string(seconds) + " s";
  if (seconds < 7200) return std::to_string(seconds / 60) + " min";
  return std::to_string(seconds / 3600) + " h";
}

std::string inMilliseconds(std::uint64_t microseconds) {
  std::ostringstream text;
  text << static_cast<double>(microseconds) / 1000 << " ms";
  return text.str();
}

std::string timesText(const InputMethodStatus& status) {
  std::string text;
  for (std::size_t group = 0; group < status.times.size(); ++group) {
    if (status.times[group] == 0) continue;
    const bool isLast = group == InputMethodStatus::kTimeBounds.size();
    const std::uint64_t bound = InputMethodStatus::kTimeBounds[isLast ? group - 1 : group];
    text += (text.empty() ? "" : ", ") + std::to_string(status.times[group]) +
            (isLast ? " longer than " : " within ") + inMilliseconds(bound);
  }
  return text.empty() ? "none" : text;
}

constexpr std::array<std::string_view, 5> kFieldKinds{
    "of this process", "none", "of another process, tells its text",
    "of another process, doesn't tell its text", "passed by for its secrets"};

std::string fixesText(const InputMethodStatus& status) {
  std::string text = std::to_string(status.fixes) + " applied";
  if (status.fixes != 0) {
    text += ", the last one " + std::to_string(status.lastFixLength) + " long and " +
            inMilliseconds(status.lastFixMicroseconds) + " behind its key";
  }
  for (std::size_t fault = 0; fault < kFixFaults; ++fault) {
    if (status.dropped[fault] == 0) continue;
    text += "; " + std::to_string(status.dropped[fault]) + " dropped: ";
    text += nameOf(static_cast<FixFault>(fault));
  }
  return text;
}

std::string fieldText(const InputMethodStatus& status) {
  std::string text(kFieldKinds[static_cast<std::size_t>(status.field) % kFieldKinds.size()]);
  for (std::size_t fault = 0; fault < ibus::kEditFaults; ++fault) {
    if (status.editsLeftOut[fault] == 0) continue;
    text += "; " + std::to_string(status.editsLeftOut[fault]) + " edits left out: ";
    text += ibus::nameOf(static_cast<ibus::EditFault>(fault));
  }
  return text;
}

void writeInputMethod(std::ostream& out, std::int32_t pid, const InputMethodStatus& status) {
  const std::string front =
      status.frontProcess == 0
          ? "nothing"
          : printable(status.frontName()) + ", process " + std::to_string(status.frontProcess);
  out << "  input method       process " << pid << '\n'
      << "    in front         " << front << '\n'
      << "    switches         " << switchesText(static_cast<std::uint32_t>(status.switches))
      << '\n'
      << "    keys             " << status.keys << ": " << status.passed << " passed on, "
      << status.consumed << " consumed\n"
      << "    handled          " << timesText(status) << '\n'
      << "    fixes            " << fixesText(status) << '\n'
      << "    field            " << fieldText(status) << '\n';
}

void writeSiblings(std::ostream& out, const FamilyStatus& family) {
  for (const Role& role : kSiblings) {
    std::string title = "  " + std::string(role.title);
    title.resize(21, ' ');
    bool isThere = false;
    for (const RunningMember& member : family.members) {
      if (member.process.announcement.signature != role.signature) continue;
      isThere = true;
      out << title << "process " << member.process.pid << ", for " << duration(member.seconds)
          << '\n';
    }
    if (!isThere) out << title << "doesn't run\n";
  }
}

void writeFamily(std::ostream& out, const FamilyStatus& family) {
  out << family.folder.native() << '\n';
  for (const auto& [pid, status] : family.inputMethods) writeInputMethod(out, pid, status);
  writeSiblings(out, family);
  for (const SegmentFacts& segment : family.segments) {
    out << "  segment " << segment.key << "        " << segment.size << " bytes, made by process "
        << segment.maker << ", user " << segment.owner << ", attached " << segment.attached
        << (segment.attached == 1 ? " time\n" : " times\n");
  }
  for (const std::string& port : family.ports) out << "  port               " << port << '\n';
  for (const std::string& name : family.refused) {
    out << "  refused            " << printable(name) << ", which belongs to another user\n";
  }
}

// JSON.

std::string member(std::string_view key, const std::string& value) {
  return inQuotes(key) + ": " + value;
}
std::string member(std::string_view key, std::uint64_t number) {
  return member(key, std::to_string(number));
}

std::string memberJSON(const RunningMember& each) {
  const desktop::Announcement& announcement = each.process.announcement;
  return "{" + member("process", std::to_string(each.process.pid)) + ", " +
         member("name", inQuotes(printable(announcement.name))) + ", " +
         member("signature", inQuotes(codeText(announcement.signature))) + ", " +
         member("bundleIdentifier", inQuotes(printable(announcement.bundleIdentifier))) + ", " +
         member("seconds", each.seconds) + "}";
}

std::string inputMethodJSON(const std::pair<std::int32_t, InputMethodStatus>& each) {
  const auto& [pid, status] = each;
  const auto number = [](std::uint64_t value) { return std::to_string(value); };
  return "{" + member("process", std::to_string(pid)) + ", " +
         member("frontProcess", status.frontProcess) + ", " +
         member("frontApplication", inQuotes(printable(status.frontName()))) + ", " +
         member("switches", status.switches) + ", " + member("keys", status.keys) + ", " +
         member("passed", status.passed) + ", " + member("consumed", status.consumed) + ", " +
         member("microseconds", arrayOf(InputMethodStatus::kTimeBounds, number)) + ", " +
         member("handled", arrayOf(status.times, number)) + ", " + member("fixes", status.fixes) +
         ", " + member("dropped", arrayOf(status.dropped, number)) + ", " +
         member("lastFixLength", status.lastFixLength) + ", " +
         member("lastFixMicroseconds", status.lastFixMicroseconds) + ", " +
         member("field", static_cast<std::uint64_t>(status.field)) + ", " +
         member("editsLeftOut", arrayOf(status.editsLeftOut, number)) + "}";
}

std::string segmentJSON(const SegmentFacts& each) {
  return "{" + member("key", each.key) + ", " + member("keyOffset", each.keyOffset) + ", " +
         member("size", each.size) + ", " + member("user", each.owner) + ", " +
         member("maker", std::to_string(each.maker)) + ", " + member("attached", each.attached) +
         "}";
}

std::string nameJSON(const std::string& name) { return inQuotes(printable(name)); }

std::string familyJSON(const FamilyStatus& family) {
  return "{" + member("folder", inQuotes(printable(family.folder.native()))) + ", " +
         member("inputMethods", arrayOf(family.inputMethods, inputMethodJSON)) + ", " +
         member("processes", arrayOf(family.members, memberJSON)) + ", " +
         member("segments", arrayOf(family.segments, segmentJSON)) + ", " +
         member("ports", arrayOf(family.ports, nameJSON)) + ", " +
         member("refused", arrayOf(family.refused, nameJSON)) + "}";
}

}  // namespace

std::string asText(const std::vector<FamilyStatus>& families) {
  if (families.empty()) return "nothing runs\n";
  std::ostringstream out;
  for (const FamilyStatus& family : families) writeFamily(out, family);
  return out.str();
}

std::string asJSON(const std::vector<FamilyStatus>& families) {
  return arrayOf(families, familyJSON) + "\n";
}

}  // namespace quorvane
