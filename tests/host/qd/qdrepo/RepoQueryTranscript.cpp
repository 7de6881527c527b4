#include "tests/host/qd/qdrepo/RepoQueryTranscript.h"

#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <stdexcept>

#include "host/qd/qdrepo/QDSRepo.h"
#include "host/qd/qdrepo/QDXPathDoc.h"
#include "service/Log.h"
#include "tools/qvdiag/RepoQueries.h"

namespace qvtest {
namespace {

using Question = RepoQueryTranscript::Question;

// Starts the line of each step. No XML 1.0 document can hold this character, even as a
// character reference, so no answer or Log line that quotes the file can fake a step.
constexpr char kStep = '\x02';

void say(std::string const& text) { std::fputs(text.c_str(), stderr); }

// Step 0 opens the repository with createRepo; step k asks question k - 1.
void askFrom(std::string const& path, std::vector<Question> const& questions, std::size_t from) {
  boost::shared_ptr<qd::QDSRepo> repo;
  if (from == 0) {
    say(std::string(1, kStep) + "0 createRepo\n");
    try {
      repo = qd::QDSRepo::createRepo(path, 0);
      say(repo ? "= a repository\n" : "= null\n");
    } catch (std::exception const& error) {
      say(std::string("! ") + error.what() + "\n");
    }
    from = 1;
  }
  if (!repo) {
    // A database that fails its check still answers queries; ask them of it all the same.
    say("# the constructor\n");
    try {
      repo.reset(new qd::QDSRepo(path, 0));
    } catch (std::exception const& error) {
      say(std::string("! ") + error.what() + "\n");
      return;
    }
  }
  for (std::size_t step = from; step <= questions.size(); ++step) {
    Question const& question = questions[step - 1];
    std::string line = std::string(1, kStep) + std::to_string(step) + " " + question.query;
    for (std::string const& argument : question.arguments) line += " [" + argument + "]";
    say(line + "\n");
    try {
      say("= " + qvdiag::RepoQueries::ask(*repo, question.query, question.arguments) + "\n");
    } catch (std::exception const& error) {
      // Also a disagreement of the two readings, where it throws.
      say(std::string("! ") + error.what() + "\n");
    }
  }
}

// An open, already unlinked scratch file.
int scratchFile() {
  std::string name = (std::filesystem::temp_directory_path() / "qv-repo-transcript-XXXXXX").string();
  int const fd = mkstemp(name.data());
  if (fd < 0) throw std::runtime_error("cannot make a scratch file like " + name);
  unlink(name.c_str());
  return fd;
}

std::string contents(int fd) {
  std::string text;
  char buffer[65536];
  lseek(fd, 0, SEEK_SET);
  for (;;) {
    ssize_t const got = read(fd, buffer, sizeof buffer);
    if (got <= 0) break;
    text.append(buffer, static_cast<std::size_t>(got));
  }
  return text;
}

std::string howEnded(int status) {
  if (WIFEXITED(status)) return "exit " + std::to_string(WEXITSTATUS(status));
  if (WIFSIGNALED(status)) return "signal " + std::to_string(WTERMSIG(status));
  return "status " + std::to_string(status);
}

// The number of the last step a transcript began; -1 when it began none.
long lastStep(std::string const& text) {
  std::size_t const at = text.rfind(kStep);
  if (at == std::string::npos) return -1;
  return std::strtol(text.c_str() + at + 1, nullptr, 10);
}

// The values of every attribute of the file, by "<element>/<attribute>" (local names).
std::map<std::string, std::set<std::string>> valuesOf(std::string const& path) {
  std::map<std::string, std::set<std::string>> values;
  xmlDocPtr const doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (doc == nullptr) return values;
  std::vector<xmlNodePtr> pending{xmlDocGetRootElement(doc)};
  while (!pending.empty()) {
    xmlNodePtr const node = pending.back();
    pending.pop_back();
    if (node == nullptr) continue;
    for (xmlNodePtr child = node->children; child != nullptr; child = child->next) {
      if (child->type == XML_ELEMENT_NODE) pending.push_back(child);
    }
    if (node->type != XML_ELEMENT_NODE) continue;
    for (xmlAttrPtr attribute = node->properties; attribute != nullptr;
         attribute = attribute->next) {
      xmlChar* const value = xmlNodeGetContent(reinterpret_cast<xmlNodePtr>(attribute));
      std::string const key = std::string(reinterpret_cast<char const*>(node->name)) + "/" +
                              reinterpret_cast<char const*>(attribute->name);
      values[key].insert(value != nullptr ? reinterpret_cast<char const*>(value) : "");
      xmlFree(value);
    }
  }
  xmlFreeDoc(doc);
  return values;
}

// Where the file's values for a parameter come from.
std::map<std::string, std::vector<std::string>> const& attributesFor() {
  static std::map<std::string, std::vector<std::string>> const kSources = [] {
    std::vector<std::string> const components{"component/name", "fcnMap/componentRef",
                                              "busInterface/componentRef",
                                              "component/adapterCompRef"};
    std::vector<std::string> const functions{"fcnMap/fcnName", "connection/srcInst",
                                             "connection/dstInst"};
    std::vector<std::string> const ports{"busInterface/name",      "arg/busInterfaceRef",
                                         "clock/name",             "busInterface/clockRef",
                                         "reg/name",               "busInterface/hlsname",
                                         "busInterface/resetRef",  "busInterface/busInterfaceRef",
                                         "ctrlReg/busInterfaceRef"};
    std::vector<std::string> const arguments{"arg/name", "arg/hwName", "arg/swRootName",
                                             "connection/srcPort", "connection/dstPort",
                                             "arg/aximmMasterRef"};
    std::vector<std::string> const tags{"busInterface/sptag", "addressSegment/sptag",
                                        "addressSegment/baseName"};
    std::map<std::string, std::vector<std::string>> made;
    for (char const* name : {"component", "componentA", "componentB", "platform"}) {
      made[name] = components;
    }
    for (char const* name : {"function", "functionA", "functionB", "kernel", "name"}) {
      made[name] = functions;
    }
    for (char const* name : {"port", "portA", "portB", "interface", "busInterfaceRef", "reset",
                             "clock", "connection", "object"}) {
      made[name] = ports;
    }
    for (char const* name : {"argument", "argumentA", "argumentB", "hwName"}) {
      made[name] = arguments;
    }
    made["tag"] = tags;
    made["base"] = tags;
    made["memport"] = {"busInterface/memport"};
    made["instance"] = {"busInterface/instanceRef", "clock/instanceRef",
                        "nocConnectivity/instanceRef", "addressSegment/memoryInstance"};
    made["domain"] = {"busInterface/clkDomain"};
    made["pipe"] = {"pipe/name"};
    made["i"] = {"clock/id", "addressSegment/index", "arg/index"};
    made["id"] = {"clock/id", "fcnMap/clockId", "systemClocks/defaultClock"};
    return made;
  }();
  return kSources;
}

// Words a parameter takes that the file need not hold.
std::vector<std::string> wordsFor(std::string const& parameter) {
  static std::map<std::string, std::vector<std::string>> const kWords{
      {"attribute",
       {"qd:type", "qd:name", "qd:componentRef", "qd:adapterType", "qd:clockPeriod", "qd:x"}},
      {"resource", {"LUT", "FF", "BRAM", "DSP", "nocPlNmu"}},
      {"type",
       {"aximm", "axis", "bram", "fifo", "register", "clock", "reset", "interrupt", "platform",
        "accelerator", "smartconnect"}},
      {"mode", {"master", "slave", "monitor"}},
      {"direction", {"in", "out", "inout"}},
      {"datamover", {"axi_dma_sg", "axi_dma_simple", "axi_datamover"}},
      {"channel", {"mm2s", "s2mm", "mm2mm"}},
      {"unique", {"true", "false"}},
      {"word", {"kernel", "accelerator", "fifo", "aximm", "M_AXI_DMA", "master", "in"}},
  };
  auto const found = kWords.find(parameter);
  return found == kWords.end() ? std::vector<std::string>{} : found->second;
}

bool takesInteger(std::string const& parameter) {
  return parameter == "i" || parameter == "id" || parameter == "low" || parameter == "high" ||
         parameter == "value";
}

// A tag, and for a plain one also ranges over it, the way callers ask for them. Ranges wider
// than a few indices are skipped: a range is read one index at a time, by design.
void addTagForms(std::string const& tag, std::vector<std::string>* forms) {
  forms->push_back(tag);
  if (tag.find('[') != std::string::npos) return;
  for (char const* range : {"[0]", "[1]", "[0:1]", "[1:3]", "[2:1]"}) forms->push_back(tag + range);
}

}  // namespace

std::vector<Question> RepoQueryTranscript::questions(std::string const& path, unsigned seed,
                                                     int forms, bool leaveOutAborting) {
  std::map<std::string, std::set<std::string>> const values = valuesOf(path);
  std::vector<std::string> anything;
  for (auto const& [key, set] : values) {
    for (std::string const& value : set) anything.push_back(value);
  }
  // Names no file should hold: the empty one, an unknown one, and two whose quote ends the
  // literal they are spliced into, one of them turning its test into a truth.
  std::vector<std::string> const outside{"", "no_such_name", "it's", "x' or '1'='1"};
  // Indices past any end, INT_MAX among them: the index readers write the position i + 1 into
  // the expression, which must not overflow there.
  std::vector<std::string> const integers{"-1", "0", "1", "2", "3", "7", "100000", "2147483647"};
  std::mt19937 random(seed);
  auto pick = [&random](std::vector<std::string> const& from) {
    return from[random() % from.size()];
  };

  std::vector<Question> made;
  for (qvdiag::RepoQueries::Query const& query : qvdiag::RepoQueries::all()) {
    if (leaveOutAborting && query.name == "isQdCompSCAdapter") continue;
    for (int form = 0; form < forms; ++form) {
      Question question{query.name, {}};
      for (std::string const& parameter : query.parameters) {
        std::vector<std::string> candidates;
        auto const sources = attributesFor().find(parameter);
        if (sources != attributesFor().end()) {
          for (std::string const& source : sources->second) {
            auto const found = values.find(source);
            if (found == values.end()) continue;
            for (std::string const& value : found->second) {
              if (parameter == "tag" || parameter == "base") {
                addTagForms(value, &candidates);
              } else {
                candidates.push_back(value);
              }
            }
          }
        }
        std::vector<std::string> const words = wordsFor(parameter);
        candidates.insert(candidates.end(), words.begin(), words.end());
        bool const integer = takesInteger(parameter);
        if (integer) {
          // Only the values that read as integers; the rest are the command line's usage errors.
          std::vector<std::string> numbers(integers);
          for (std::string const& value : candidates) {
            if (!value.empty() && value.find_first_not_of("-0123456789") == std::string::npos &&
                value.size() < 8) {
              numbers.push_back(value);
            }
          }
          question.arguments.push_back(pick(numbers));
          continue;
        }
        // Mostly what the file holds for this parameter; sometimes anything in the file, or
        // a name from outside it.
        unsigned const where = random() % 8;
        if (where < 5 && !candidates.empty()) {
          question.arguments.push_back(pick(candidates));
        } else if (where < 6 && !anything.empty()) {
          question.arguments.push_back(pick(anything));
        } else {
          question.arguments.push_back(pick(outside));
        }
      }
      made.push_back(std::move(question));
      if (query.parameters.empty()) break;  // one form is all there is
    }
  }
  return made;
}

std::string RepoQueryTranscript::forked(std::string const& path,
                                        std::vector<Question> const& questions, bool nameIndex) {
  std::string transcript;
  std::size_t from = 0;
  while (from <= questions.size()) {
    int const fd = scratchFile();
    std::fflush(stdout);
    std::fflush(stderr);
    pid_t const child = fork();
    if (child < 0) throw std::runtime_error("fork failed");
    if (child == 0) {
      // An aborted child leaves no core file behind.
      rlimit const noCore{0, 0};
      setrlimit(RLIMIT_CORE, &noCore);
      int const nothing = open("/dev/null", O_RDONLY);
      dup2(nothing, 0);
      dup2(fd, 1);
      dup2(fd, 2);
      qd::QDXPathDoc::setShortcutsForNewDocuments(nameIndex);
      Log::reportingLevel = logINTERNAL;
      askFrom(path, questions, from);
      std::fflush(stdout);
      std::fflush(stderr);
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::string const text = contents(fd);
    close(fd);
    transcript += text + "# ended: " + howEnded(status) + "\n";
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) break;
    long const last = lastStep(text);
    // A child that ended before the step it was to begin with cannot be taken further.
    if (last < static_cast<long>(from)) break;
    from = static_cast<std::size_t>(last) + 1;
  }
  return transcript;
}

std::string RepoQueryTranscript::inProcess(std::string const& path,
                                           std::vector<Question> const& questions,
                                           bool nameIndex) {
  int const fd = scratchFile();
  int const nothing = open("/dev/null", O_RDONLY);
  std::fflush(stdout);
  std::fflush(stderr);
  int const savedIn = dup(0);
  int const savedOut = dup(1);
  int const savedError = dup(2);
  dup2(nothing, 0);
  dup2(fd, 1);
  dup2(fd, 2);
  std::int32_t const level = Log::reportingLevel;
  Log::reportingLevel = logINTERNAL;
  qd::QDXPathDoc::setShortcutsForNewDocuments(nameIndex);

  askFrom(path, questions, 0);

  std::fflush(stdout);
  std::fflush(stderr);
  qd::QDXPathDoc::setShortcutsForNewDocuments(true);
  Log::reportingLevel = level;
  dup2(savedIn, 0);
  dup2(savedOut, 1);
  dup2(savedError, 2);
  for (int opened : {savedIn, savedOut, savedError, nothing}) close(opened);
  std::string const text = contents(fd);
  close(fd);
  return text;
}

std::string RepoQueryTranscript::firstDifference(std::string const& expected,
                                                 std::string const& actual) {
  std::size_t line = 1;
  std::size_t at = 0;
  while (at < expected.size() || at < actual.size()) {
    std::size_t const endExpected = std::min(expected.find('\n', at), expected.size());
    std::size_t const endActual = std::min(actual.find('\n', at), actual.size());
    std::string const one = at < expected.size() ? expected.substr(at, endExpected - at) : "";
    std::string const other = at < actual.size() ? actual.substr(at, endActual - at) : "";
    if (one != other || endExpected != endActual) {
      return "line " + std::to_string(line) + ":\n  expected: " + one + "\n  actual:   " + other;
    }
    at = endExpected + 1;
    ++line;
  }
  return "";
}

}  // namespace qvtest
