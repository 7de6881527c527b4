#include "checks/RepositoryCheck.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "host/qd/qdrepo/QDSRepo.h"
#include "service/Log.h"

namespace qvcheck {

namespace {

// How the child ends.
constexpr int kChildPassed = 0;
constexpr int kChildCannotOpen = 10;
constexpr int kChildCheckFailed = 11;
constexpr int kChildThrew = 12;

// Every query the import asks of a database (rtd/RtdKernelConfigure.cpp,
// readKernelsFromSystemCompilerDB), for every hardware function the repository lists; then, for
// every component, the questions a tool chain asks first of a repository (what a component is,
// and the platform's clocks), each of which the repository answers twice and compares.
void askQueries(qd::QDSRepo& repo) {
  int const functions = repo.getNumQdHwFcns();
  for (int f = 0; f < functions; ++f) {
    std::string const name = repo.getIthQdHwFcn(f);
    if (!repo.isQdHwFcn(name)) continue;
    for (int i = 0; i < repo.getNumQdHwFcnArgs1(name); ++i) {
      repo.getIthQdHwFcnArg1(name, i);
      repo.getIthQdHwFcnArgHwName1(name, i);
      repo.getIthQdHwFcnArgBusInterfaceRef1(name, i);
      repo.getIthQdHwFcnArgDataWidth1(name, i);
      repo.getIthQdHwFcnArgOffset(name, i);
      repo.getIthQdHwFcnArgPortInterfaceType1(name, i);
    }
    std::string const component = repo.getQdHwFcnQdComponentRef(name);
    for (int j = 0; j < repo.getQdCompNumPorts(component); ++j) {
      std::string const port = repo.getQdCompPortName(component, j);
      repo.getQdCompPortMode(component, port);
      repo.getQdCompPortDataWidth(component, port);
      repo.getQdCompPortType(component, j);
    }
  }
  int const components = repo.getNumQdComponents();
  for (int c = 0; c < components; ++c) {
    std::string const component = repo.getIthQdComponent(c);
    repo.isQdComp(component);
    repo.getQdCompType(component);
    repo.isQdAcceleratorComp(component);
    repo.isQdPlatformComp(component);
  }
  std::string const platform = repo.getQdPlatformComp();
  repo.getNumPlatformClocks(platform);
  repo.getNumAvailableClocks(platform);
  repo.getPlatformDefaultClockId(platform);
}

// In the child: opens the repository, runs checkDatabase and the import's queries, and ends the
// process with one of the codes above, or by the repository's own exit.
[[noreturn]] void askInChild(std::string const& path) {
  Log::reportingLevel = logERROR;
  std::unique_ptr<qd::QDSRepo> repo;
  try {
    repo = std::make_unique<qd::QDSRepo>(path, 0u);
  } catch (std::exception const& error) {
    std::fprintf(stderr, "%s\n", error.what());
    std::fflush(stderr);
    _exit(kChildCannotOpen);
  }
  bool passed = false;
  try {
    passed = repo->checkDatabase();
    askQueries(*repo);
  } catch (std::exception const& error) {
    // A build in which a disagreement throws instead of ending the process (the fuzz build).
    std::fprintf(stderr, "%s\n", error.what());
    std::fflush(stderr);
    _exit(kChildThrew);
  }
  std::fflush(stderr);
  _exit(passed ? kChildPassed : kChildCheckFailed);
}

// The first line of `text` that contains `needle`, else the last non-empty line.
std::string pickLine(std::string const& text, char const* needle) {
  std::string last;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string const line = text.substr(start, end - start);
    if (line.find(needle) != std::string::npos) return line;
    if (!line.empty()) last = line;
    start = end + 1;
  }
  return last;
}

void add(CheckReport& report, std::string const& path, std::string text, std::string effect,
         char const* code) {
  Finding finding;
  finding.severity = Severity::kError;
  finding.file = path;
  finding.text = std::move(text);
  finding.effect = std::move(effect);
  finding.code = code;
  report.add(std::move(finding));
}

}  // namespace

void RepositoryCheck::checkFile(std::string const& path, CheckReport& report) {
  report.addFile(path);
  int pipeEnds[2];
  if (::pipe(pipeEnds) != 0) {
    add(report, path, std::string("cannot be checked: ") + std::strerror(errno), "",
        "QV-REPO-UNCHECKED");
    return;
  }
  std::fflush(nullptr);
  pid_t const child = ::fork();
  if (child < 0) {
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
    add(report, path, std::string("cannot be checked: ") + std::strerror(errno), "",
        "QV-REPO-UNCHECKED");
    return;
  }
  if (child == 0) {
    ::close(pipeEnds[0]);
    ::dup2(pipeEnds[1], STDERR_FILENO);
    ::close(pipeEnds[1]);
    askInChild(path);
  }
  ::close(pipeEnds[1]);
  std::string messages;
  char buffer[4096];
  while (true) {
    ssize_t const n = ::read(pipeEnds[0], buffer, sizeof buffer);
    if (n > 0) {
      messages.append(buffer, static_cast<std::size_t>(n));
      continue;
    }
    if (n < 0 && errno == EINTR) continue;
    break;
  }
  ::close(pipeEnds[0]);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFSIGNALED(status)) {
    add(report, path,
        std::string("the process asking its queries ended with signal ") +
            std::to_string(WTERMSIG(status)) + " (" + strsignal(WTERMSIG(status)) + ")",
        "a compile server asking the same would end", "QV-REPO-CRASHED");
    return;
  }
  int const code = WEXITSTATUS(status);
  if (code == kChildPassed) return;
  if (code == kChildCannotOpen) {
    add(report, path, "does not open as a repository: " + pickLine(messages, ""),
        "the import passes the database over: kernels without kernel.xml get no ports or "
        "arguments",
        "QV-REPO-UNREADABLE");
    return;
  }
  if (code == kChildCheckFailed) {
    add(report, path,
        "checkDatabase fails: not every hardware function maps onto an accelerator or the "
        "platform (" + pickLine(messages, "ERROR") + ")",
        "", "QV-REPO-CHECK-FAILED");
    return;
  }
  std::string const line = pickLine(messages, "Equivalency violation");
  if (line.find("Equivalency violation") != std::string::npos) {
    add(report, path,
        "the file's two readings disagree: " + line.substr(line.find("Equivalency violation")),
        "the repository ends the process that asks this query: the import ends the compile "
        "server", "QV-REPO-DISAGREEMENT");
    return;
  }
  add(report, path,
      "the process asking its queries exited with code " + std::to_string(code) +
          (line.empty() ? std::string() : ": " + line),
      "a compile server asking the same would end", "QV-REPO-CRASHED");
}

}  // namespace qvcheck
