// Speed of the hardware repository, against what libxml2 alone costs for the same work.
//
//   build/bench/repo_bench
//
// Synthetic databases are written once into a temporary directory: a platform, accelerator
// components of 20 interfaces each and hardware functions of 16 arguments. The full one has 500
// components and 2,000 functions.
//
// BM_CreateRepo opens a database with QDSRepo::createRepo (both reads of the file, the cache,
// the check of every function and the dump it logs), at a tenth, a fifth, two fifths and the
// whole of the full size. Its "index" argument is 1 for the repository as it is and 0 for the
// same queries each evaluated over the whole document (QDXPathDoc's name index, recent answers
// and compiled shapes switched off),
// where the check and the dump, some 75 queries per argument, grow with the square of the size:
// only the smaller sizes are run that way. The counter "peak_rss_mib" is the process's peak
// resident size after the run (getrusage); run one size alone to read it for that size.
// BM_ConstructRepo is the constructor alone on the full database (both reads and the cache), the
// part of createRepo before its check and dump. BM_BareParse parses the full database with
// xmlReadFile alone.
// BM_QueryMix asks 100,000 queries of six kinds through the repository (again with the index
// on and off); BM_BareQueryMix evaluates exactly the XPath expressions those queries evaluate
// (guards included) with xmlXPathEvalExpression on a parsed document, and reads the values the
// same way: what the two dependencies cost without the index.
// docs/repository.md, "What it costs", has the figures: the full createRepo took 5.1 s CPU with
// the index and recent answers, 3.6 to 3.9 s with the compiled shapes added, against 0.084 s
// for BM_BareParse.
// BM_SpTagSlrs and BM_MemObjectSegmentsForSpTag ask a ranged SP tag of 32 and of 512 indices on
// a platform whose memory has 512 segments; their counter "per_index" is the cost of one index.
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "host/qd/qdrepo/QDNamespaces.h"
#include "host/qd/qdrepo/QDSRepo.h"
#include "host/qd/qdrepo/QDXPathDoc.h"

namespace {

namespace fs = std::filesystem;

constexpr int kComponents = 500;  // of the full database
constexpr int kInterfaces = 20;
constexpr int kFunctions = 2000;  // of the full database
constexpr int kArguments = 16;
constexpr int kQueries = 100000;

std::string component(int c) { return "comp_" + std::to_string(c); }
std::string function(int f) { return "fcn_" + std::to_string(f); }
std::string port(int p) { return "port_" + std::to_string(p); }

// A file "qd_ip_db.xml" in a directory of its own under the system's temporary directory, both
// removed when this goes.
class ScratchDatabaseFile {
 public:
  explicit ScratchDatabaseFile(std::string const& directory)
      : dir_(fs::temp_directory_path() / (directory + "-" + std::to_string(::getpid()))),
        path_((dir_ / "qd_ip_db.xml").string()) {
    fs::create_directories(dir_);
  }
  ~ScratchDatabaseFile() {
    std::error_code ignored;
    fs::remove_all(dir_, ignored);
  }
  ScratchDatabaseFile(ScratchDatabaseFile const&) = delete;
  ScratchDatabaseFile& operator=(ScratchDatabaseFile const&) = delete;
  std::string const& path() const { return path_; }

 private:
  fs::path dir_;
  std::string path_;
};

// Writes a database of `components` components and `functions` functions, removed at exit.
class Database {
 public:
  Database(int components, int functions) : file_("qv-repo-bench-" + std::to_string(functions)) {
    std::ofstream out(file_.path());
    out << "<?xml version=\"1.0\"?>\n<qd:repository xmlns:qd=\"urn:quarrix:qd\">\n";
    out << "<qd:component qd:name=\"platform\" qd:type=\"platform\"><qd:platformInfo>"
           "<qd:systemClocks qd:defaultClock=\"0\">";
    for (int id = 0; id < 4; ++id) {
      out << "<qd:clock qd:name=\"clk_" << id << "\" qd:id=\"" << id
          << "\" qd:frequency=\"300.000000\" qd:status=\"scalable\"/>";
    }
    out << "</qd:systemClocks></qd:platformInfo></qd:component>\n";
    for (int c = 0; c < components; ++c) {
      out << "<qd:component qd:name=\"" << component(c) << "\" qd:type=\"accelerator\">";
      out << "<qd:busInterface qd:name=\"" << port(0) << "\" qd:busTypeRef=\"clock\"/>";
      out << "<qd:busInterface qd:name=\"" << port(1) << "\" qd:busTypeRef=\"reset\" qd:clockRef=\""
          << port(0) << "\"/>";
      for (int p = 2; p < kInterfaces; ++p) {
        out << "<qd:busInterface qd:name=\"" << port(p) << "\" qd:busTypeRef=\""
            << (p % 2 == 0 ? "aximm" : "axis") << "\" qd:mode=\"master\" qd:clockRef=\"" << port(0)
            << "\" qd:dataWidth=\"512\" qd:instanceRef=\"inst_" << c << "_" << p << "\"/>";
      }
      out << "</qd:component>\n";
    }
    for (int f = 0; f < functions; ++f) {
      out << "<qd:fcnMap qd:fcnName=\"" << function(f) << "\" qd:componentRef=\""
          << component(f % components) << "\" qd:type=\"hls\">";
      for (int a = 0; a < kArguments; ++a) {
        out << "<qd:arg qd:name=\"arg_" << a << "\" qd:direction=\"in\" "
            << "qd:portInterfaceType=\"register\" qd:busInterfaceRef=\"" << port(2)
            << "\" qd:dataWidth=\"32\" qd:offset=\"0x" << 16 + 8 * a << "\"/>";
      }
      out << "<qd:ctrlReg qd:type=\"ap_ctrl_hs\"/></qd:fcnMap>\n";
    }
    out << "</qd:repository>\n";
  }
  std::string const& path() const { return file_.path(); }

 private:
  ScratchDatabaseFile file_;
};

Database const& database() {
  static Database const kDatabase(kComponents, kFunctions);
  return kDatabase;
}

// A database with `tenths` tenths of the full one's components and functions.
Database const& scaledDatabase(int tenths) {
  static std::map<int, std::unique_ptr<Database>> made;
  auto& entry = made[tenths];
  if (!entry)
    entry = std::make_unique<Database>(kComponents * tenths / 10, kFunctions * tenths / 10);
  return *entry;
}

// The mix: the same pseudo-random sequence of (kind, function or component, port) for both.
struct Query {
  int kind;
  int target;
  int port;
};

std::vector<Query> const& mix() {
  static std::vector<Query> const kMix = [] {
    std::mt19937 random(7);
    std::vector<Query> made;
    made.reserve(kQueries);
    for (int i = 0; i < kQueries; ++i) {
      int const kind = static_cast<int>(random() % 6);
      int const target = static_cast<int>(random() % (kind < 3 ? kFunctions : kComponents));
      made.push_back({kind, target, static_cast<int>(random() % kInterfaces)});
    }
    return made;
  }();
  return kMix;
}

// The process's peak resident size so far, in MiB (Linux reports ru_maxrss in KiB).
double peakResidentMiB() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// Repositories made while this lives read named elements through the index or not.
class NameIndexSetting {
 public:
  explicit NameIndexSetting(bool enabled) { qd::QDXPathDoc::setShortcutsForNewDocuments(enabled); }
  ~NameIndexSetting() { qd::QDXPathDoc::setShortcutsForNewDocuments(true); }
  NameIndexSetting(NameIndexSetting const&) = delete;
  NameIndexSetting& operator=(NameIndexSetting const&) = delete;
};

void BM_CreateRepo(benchmark::State& state) {
  std::string const path = scaledDatabase(static_cast<int>(state.range(0))).path();
  NameIndexSetting const setting(state.range(1) != 0);
  for (auto _ : state) {
    boost::shared_ptr<qd::QDSRepo> repo = qd::QDSRepo::createRepo(path, 0);
    if (!repo) state.SkipWithError("the database did not open");
    benchmark::DoNotOptimize(repo);
  }
  state.counters["functions"] = kFunctions * state.range(0) / 10;
  state.counters["peak_rss_mib"] = peakResidentMiB();
}
BENCHMARK(BM_CreateRepo)
    ->ArgNames({"tenths", "index"})
    ->Args({1, 1})
    ->Args({2, 1})
    ->Args({4, 1})
    ->Args({10, 1})
    ->Args({1, 0})
    ->Args({2, 0})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

// What createRepo costs before its check and dump: both reads of the file and the cache.
void BM_ConstructRepo(benchmark::State& state) {
  for (auto _ : state) {
    qd::QDSRepo repo(database().path(), 0);
    benchmark::DoNotOptimize(repo);
  }
}
BENCHMARK(BM_ConstructRepo)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_BareParse(benchmark::State& state) {
  for (auto _ : state) {
    xmlDocPtr doc = xmlReadFile(database().path().c_str(), nullptr, 0);
    benchmark::DoNotOptimize(doc);
    xmlFreeDoc(doc);
  }
}
BENCHMARK(BM_BareParse)->Unit(benchmark::kMillisecond);

void BM_QueryMix(benchmark::State& state) {
  NameIndexSetting const setting(state.range(0) != 0);
  qd::QDSRepo repo(database().path(), 0);
  long long sink = 0;
  for (auto _ : state) {
    for (Query const& query : mix()) {
      std::string const f = function(query.target);
      std::string const c = component(query.target);
      std::string const p = port(query.port);
      switch (query.kind) {
        case 0:
          sink += repo.isQdHwFcn(f);
          break;
        case 1:
          sink += static_cast<long long>(repo.getQdHwFcnQdComponentRef(f).size());
          break;
        case 2:
          sink += repo.getNumQdHwFcnArgs1(f);
          break;
        case 3:
          sink += repo.getQdCompNumPorts(c);
          break;
        case 4:
          sink += static_cast<long long>(repo.getQdCompBusInterfaceInstanceRef(c, p).size());
          break;
        default:
          sink += repo.isQdCompAxiPort(c, p);
          break;
      }
    }
  }
  benchmark::DoNotOptimize(sink);
  state.SetItemsProcessed(state.iterations() * kQueries);
}
BENCHMARK(BM_QueryMix)
    ->ArgName("index")
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

// The floor: the expressions of the mix's queries, evaluated with libxml2 and read alike.
class BareDocument {
 public:
  BareDocument() : doc_(xmlReadFile(database().path().c_str(), nullptr, 0)) {
    context_ = xmlXPathNewContext(doc_);
    for (qd::QDNamespace const& space : qd::kQDNamespaces) {
      xmlXPathRegisterNs(context_, reinterpret_cast<xmlChar const*>(space.prefix),
                         reinterpret_cast<xmlChar const*>(space.uri));
    }
  }
  ~BareDocument() {
    xmlXPathFreeContext(context_);
    xmlFreeDoc(doc_);
  }

  double number(std::string const& expression) {
    xmlXPathObjectPtr result = evaluate(expression);
    double const value = result != nullptr ? result->floatval : -1;
    xmlXPathFreeObject(result);
    return value;
  }
  bool boolean(std::string const& expression) {
    xmlXPathObjectPtr result = evaluate(expression);
    bool const value = result != nullptr && result->boolval != 0;
    xmlXPathFreeObject(result);
    return value;
  }
  std::string text(std::string const& expression) {
    xmlXPathObjectPtr result = evaluate(expression);
    std::string value;
    if (result != nullptr && result->nodesetval != nullptr && result->nodesetval->nodeNr > 0) {
      xmlNodePtr node = result->nodesetval->nodeTab[0];
      if (node->children != nullptr) value = reinterpret_cast<char const*>(node->children->content);
    }
    xmlXPathFreeObject(result);
    return value;
  }

 private:
  xmlXPathObjectPtr evaluate(std::string const& expression) {
    return xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(expression.c_str()), context_);
  }

  xmlDocPtr doc_;
  xmlXPathContextPtr context_ = nullptr;
};

void BM_BareQueryMix(benchmark::State& state) {
  BareDocument doc;
  long long sink = 0;
  for (auto _ : state) {
    for (Query const& query : mix()) {
      std::string const f =
          "/qd:repository/qd:fcnMap[@qd:fcnName='" + function(query.target) + "']";
      std::string const c =
          "/qd:repository/qd:component[@qd:name='" + component(query.target) + "']";
      std::string const p = port(query.port);
      switch (query.kind) {
        case 0:
          sink += doc.boolean("boolean(" + f + ")");
          break;
        case 1:
          if (doc.boolean("boolean(" + f + ")"))
            sink += static_cast<long long>(doc.text(f + "[1]/@qd:componentRef").size());
          break;
        case 2:
          if (doc.boolean("boolean(" + f + ")"))
            sink += static_cast<long long>(doc.number("count(" + f + "[1]/qd:arg)"));
          break;
        case 3:
          if (doc.boolean("boolean(" + c + ")"))
            sink += static_cast<long long>(doc.number("count(" + c + "[1]/qd:busInterface)"));
          break;
        case 4:
          sink += static_cast<long long>(
              doc.text(c + "[1]/qd:busInterface[@qd:name='" + p + "']/@qd:instanceRef").size());
          break;
        default:
          sink += doc.boolean("boolean(" + c + "[1]/qd:busInterface[@qd:name='" + p +
                              "' and (@qd:busTypeRef='aximm' or @qd:busTypeRef='axis')])");
          break;
      }
    }
  }
  benchmark::DoNotOptimize(sink);
  state.SetItemsProcessed(state.iterations() * kQueries);
}
BENCHMARK(BM_BareQueryMix)->Unit(benchmark::kMillisecond)->Iterations(1);

// A platform whose memory "MEM" is one ranged SP tag of kTagIndices segments (four SLRs in
// turn), beside 50 accelerators of the same shape as above so that the document is not trivially
// small. Removed at exit.
constexpr int kTagIndices = 512;

class TagDatabase {
 public:
  TagDatabase() : file_("qv-repo-bench-tags") {
    std::ofstream out(file_.path());
    out << "<?xml version=\"1.0\"?>\n<qd:repository xmlns:qd=\"urn:quarrix:qd\">\n";
    out << "<qd:component qd:name=\"platform\" qd:type=\"platform\"><qd:platformInfo>"
           "<qd:systemClocks qd:defaultClock=\"0\"><qd:clock qd:name=\"clk_0\" qd:id=\"0\""
           " qd:frequency=\"300.000000\" qd:status=\"fixed\"/></qd:systemClocks>"
           "</qd:platformInfo>"
           "<qd:busInterface qd:name=\"clk_0\" qd:busTypeRef=\"clock\" qd:mode=\"master\"/>"
           "<qd:busInterface qd:name=\"MEM\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
           " qd:clockRef=\"clk_0\" qd:memport=\"memss\" qd:sptag=\"MEM\" qd:cardinality=\""
        << kTagIndices << "\">";
    for (int index = 0; index < kTagIndices; ++index) {
      out << "<qd:addressSegment qd:name=\"MEM_" << index << "\" qd:baseName=\"MEM_S" << index
          << "\" qd:index=\"" << index << "\" qd:slr=\"SLR" << index % 4 << "\"/>";
    }
    out << "</qd:busInterface></qd:component>\n";
    for (int c = 0; c < 50; ++c) {
      out << "<qd:component qd:name=\"" << component(c) << "\" qd:type=\"accelerator\">";
      for (int p = 0; p < kInterfaces; ++p) {
        out << "<qd:busInterface qd:name=\"" << port(p) << "\" qd:busTypeRef=\"clock\"/>";
      }
      out << "</qd:component>\n";
    }
    out << "</qd:repository>\n";
  }
  std::string const& path() const { return file_.path(); }

 private:
  ScratchDatabaseFile file_;
};

TagDatabase const& tagDatabase() {
  static TagDatabase const kDatabase;
  return kDatabase;
}

// A range query evaluates one expression per index (two for the segments: a test, then the
// read), so the cost of a range is its width times the cost per index. The counter "per_index"
// is that cost.
template <class Ask>
void rangeOfTag(benchmark::State& state, Ask ask) {
  qd::QDSRepo repo(tagDatabase().path(), 0);
  int const indices = static_cast<int>(state.range(0));
  std::string const tag = repo.assembleRangeSpTag("MEM", 0, indices - 1);
  std::size_t sink = 0;
  for (auto _ : state) sink += ask(repo, tag).size();
  if (sink != static_cast<std::size_t>(state.iterations()) * ask(repo, tag).size()) {
    state.SkipWithError("the answers changed");
  }
  benchmark::DoNotOptimize(sink);
  state.counters["per_index"] =
      benchmark::Counter(static_cast<double>(state.iterations() * indices),
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_SpTagSlrs(benchmark::State& state) {
  rangeOfTag(state, [](qd::QDSRepo& repo, std::string const& tag) {
    return repo.getSpTagSlrs("platform", tag, true);
  });
}
BENCHMARK(BM_SpTagSlrs)
    ->ArgName("indices")
    ->Arg(32)
    ->Arg(kTagIndices)
    ->Unit(benchmark::kMillisecond);

void BM_MemObjectSegmentsForSpTag(benchmark::State& state) {
  rangeOfTag(state, [](qd::QDSRepo& repo, std::string const& tag) {
    return repo.getMemObjectSegmentsForSpTag("platform", "MEM", tag);
  });
}
BENCHMARK(BM_MemObjectSegmentsForSpTag)
    ->ArgName("indices")
    ->Arg(32)
    ->Arg(kTagIndices)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
