#include "tools/doctor/Checks.h"

#include <algorithm>
#include <cstdlib>

#include "tools/doctor/Environments.h"

namespace quorvane::doctor {
namespace {

constexpr const char* kEngine = "quorvane";
constexpr const char* kSetUp = "run quorvane setup";

Finding good(std::string found) { return {{}, State::Good, std::move(found), {}}; }
Finding bad(std::string found, std::string remedy) {
  return {{}, State::Bad, std::move(found), std::move(remedy)};
}
Finding open(std::string found) { return {{}, State::Open, std::move(found), {}}; }

std::string process(std::int32_t pid) { return "process " + std::to_string(pid); }

Finding component(const Facts& facts) {
  const Component& component = facts.component;
  if (component.file.empty()) {
    return bad(
        "IBus finds no quorvane.xml",
        "install the package; with another prefix than /usr IBUS_COMPONENT_PATH must lead to "
        "it: run quorvane setup, then log out and in");
  }
  if (!component.programRuns) {
    return bad(component.file + " names " + component.program + ", which can't be run",
               "install the package again");
  }
  return good(component.file + " starts " + component.program);
}

Finding daemon(const Facts& facts) {
  if (facts.daemon.process == 0) {
    return bad("ibus-daemon doesn't run",
               "run ibus-daemon -drx, and im-config -n ibus to have it at each login");
  }
  if (!facts.daemon.answers) {
    return bad("ibus-daemon, " + process(facts.daemon.process) + ", doesn't answer",
               "end it with kill -9 " + std::to_string(facts.daemon.process) +
                   " and run ibus-daemon -drx");
  }
  const std::string told = valueOf(facts.shell, "IBUS_ADDRESS");
  if (!told.empty() && told != facts.daemon.address) {
    return bad("IBUS_ADDRESS of this shell leads to another daemon", "run unset IBUS_ADDRESS");
  }
  return good("ibus-daemon runs, " + process(facts.daemon.process));
}

Finding known(const Facts& facts) {
  if (!facts.daemon.answers) return open("the daemon must answer first");
  if (!facts.daemon.knowsEngine)
    return bad("the daemon doesn't know the engine", "run ibus restart");
  return good("the daemon knows the engine");
}

Finding listed(const Facts& facts) {
  const bool gnome = isGnome(facts.session.value_or(facts.shell));
  const std::optional<bool>& list = gnome ? facts.inGnomeList : facts.inIBusList;
  const std::string name = gnome ? "GNOME's input sources" : "IBus's engines";
  if (!list) return bad("there are no settings of " + name, "install the package again");
  if (!*list) return bad("isn't among " + name, kSetUp);
  return good("is among " + name);
}

Finding selected(const Facts& facts) {
  if (!facts.daemon.answers) return open("the daemon must answer first");
  if (facts.daemon.engine != kEngine) {
    return bad(
        "the engine in use is " + (facts.daemon.engine.empty() ? "none" : facts.daemon.engine),
        "choose Quorvane in the panel, or run ibus engine quorvane");
  }
  return good("is in use");
}

Finding server(const Facts& facts) {
  if (facts.servers.empty()) {
    return bad("no input method runs",
               "choose Quorvane in the panel again; quorvane server --ibus tells why it ends");
  }
  if (facts.servers.size() > 1) {
    return bad(std::to_string(facts.servers.size()) + " input methods run",
               "run quorvane stop, then choose Quorvane in the panel again");
  }
  return good("runs, " + process(facts.servers.front()));
}

std::string faultOf(const Segment& segment, std::uint32_t user) {
  const std::string name = "segment " + std::to_string(segment.key);
  if (segment.owner != user) return name + " belongs to user " + std::to_string(segment.owner);
  if (segment.size == segment.wanted) return {};
  return name + " has " + std::to_string(segment.size) + " bytes, not " +
         std::to_string(segment.wanted);
}

Finding segments(const Facts& facts) {
  for (const Segment& each : facts.segments) {
    const std::string fault = faultOf(each, facts.user);
    if (fault.empty()) continue;
    return bad(fault, each.owner == facts.user
                          ? "run quorvane stop"
                          : "have that user run quorvane stop, or set QUORVANE_KEY_OFFSET for the "
                            "session");
  }
  if (!facts.segments.empty()) return good(std::to_string(facts.segments.size()) + ", all ours");
  if (facts.mainApplication == 0) return open("the main application makes them");
  return bad("none, though the main application runs",
             "run quorvane stop; ipcs -ml tells whether "
             "the system allows shared memory");
}

Finding mainApplication(const Facts& facts) {
  if (facts.mainApplication != 0) return good("runs, " + process(facts.mainApplication));
  if (!facts.launchFault.empty()) {
    return bad("can't be started: " + facts.launchFault,
               "run quorvane settings main-application none");
  }
  if (facts.servers.empty()) return open("the input method starts it");
  return bad("doesn't run", "run quorvane stop, then choose Quorvane in the panel again");
}

/// That of whoever asks is a terminal's, mostly.
Finding field(const Facts& facts) {
  switch (facts.field) {
    case desktop::FieldKind::Told:
      return good("of " + facts.client + ", tells its text: it is corrected");
    case desktop::FieldKind::Untold:
      return good("of " + facts.client + ", doesn't tell its text: nothing is corrected there");
    case desktop::FieldKind::Secret:
      return good("is passed by, as passwords and terminals are");
    case desktop::FieldKind::Own:
    case desktop::FieldKind::None:
      break;
  }
  return good("none; sleep 5; quorvane doctor leaves time to click into one");
}

Finding dictionary(const Facts& facts) {
  if (facts.hasDictionary) return good("knows English");
  return bad("there is no English dictionary", "install hunspell-en-us or aspell-en");
}

Finding words(const Facts& facts) {
  if (facts.missingData.empty()) return good("all files are there");
  return bad("missing: " + facts.missingData.front(), "install the package again");
}

Finding layout(const Facts& facts) {
  if (facts.hasLayout) return good(facts.layout);
  return bad("there is no keyboard layout " + facts.layout,
             "mend QUORVANE_LAYOUT, XKB_DEFAULT_LAYOUT or /etc/default/keyboard; us is taken now");
}

Finding toolkitsOf(const Variables& variables, const std::string& remedy) {
  const std::string fault = toolkitFault(variables);
  return fault.empty() ? good("programs take IBus") : bad(fault, remedy);
}

Finding shellToolkits(const Facts& facts) {
  return toolkitsOf(facts.shell, "run im-config -n ibus, log out and in, and open a new terminal");
}

Finding sessionToolkits(const Facts& facts) {
  if (!facts.session) return open("the daemon must run first");
  return toolkitsOf(*facts.session, "run im-config -n ibus, then log out and in");
}

/// A number would have Qt wait, too, which then puts edits behind the keys that follow.
Finding syncMode(const Facts& facts) {
  const Variables& variables = facts.session.value_or(facts.shell);
  const std::string mode = valueOf(variables, "IBUS_ENABLE_SYNC_MODE");
  if (mode == "true") return good("is on");
  const bool harms = std::strtol(mode.c_str(), nullptr, 10) != 0;
  return bad(harms ? "IBUS_ENABLE_SYNC_MODE is a number, and Qt puts corrections too late"
                   : "IBUS_ENABLE_SYNC_MODE isn't true, and some corrections are left out",
             "run quorvane setup, then log out and in; where systemd doesn't start the session put "
             "export IBUS_ENABLE_SYNC_MODE=true into ~/.xsessionrc");
}

struct Check {
  const char* name;
  Finding (*examine)(const Facts& facts);
};
constexpr std::array<Check, 15> kChecks{{{"component", component},
                                         {"daemon", daemon},
                                         {"engine known", known},
                                         {"engine listed", listed},
                                         {"engine selected", selected},
                                         {"toolkits, shell", shellToolkits},
                                         {"toolkits, session", sessionToolkits},
                                         {"sync mode", syncMode},
                                         {"server", server},
                                         {"segments", segments},
                                         {"main application", mainApplication},
                                         {"field in use", field},
                                         {"dictionary", dictionary},
                                         {"word data", words},
                                         {"keyboard layout", layout}}};

}  // namespace

std::vector<Finding> examine(const Facts& facts) {
  std::vector<Finding> findings;
  for (const Check& check : kChecks) {
    findings.push_back(check.examine(facts));
    findings.back().check = check.name;
  }
  return findings;
}

bool isAllWell(const std::vector<Finding>& findings) {
  return std::ranges::all_of(findings,
                             [](const Finding& each) { return each.state == State::Good; });
}

}  // namespace quorvane::doctor
