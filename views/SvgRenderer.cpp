#include "views/SvgRenderer.h"

#include <graphviz/cgraph.h>
#include <graphviz/gvc.h>

#include <deque>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <unordered_map>

extern "C" {
extern gvplugin_library_t gvplugin_dot_layout_LTX_library;
extern gvplugin_library_t gvplugin_core_LTX_library;
// The DOT scanner, a flex scanner with the prefix "aag". libcgraph exports it but its headers do
// not declare it.
int aaglex_destroy(void);
}

namespace qvviews {
namespace {

// Guards every use of Graphviz, whose library keeps the last error and parts of the layout's
// state in globals.
std::mutex graphvizMutex;

// The last error cgraph reported while the lock is held, instead of its default of printing to
// standard error.
std::string lastError;

int keepError(char* message) {
  lastError += message;
  return 0;
}

// Graphviz wants a writable table; it reads it only.
lt_symlist_t builtins[] = {
    {"gvplugin_dot_layout_LTX_library", &gvplugin_dot_layout_LTX_library},
    {"gvplugin_core_LTX_library", &gvplugin_core_LTX_library},
    {nullptr, nullptr},
};

// Sends cgraph's messages to lastError while it lives.
class ErrorCapture {
 public:
  ErrorCapture() {
    lastError.clear();
    agseterr(AGERR);
    agseterrf(keepError);
  }
  ~ErrorCapture() { agseterrf(nullptr); }
  ErrorCapture(ErrorCapture const&) = delete;
  ErrorCapture& operator=(ErrorCapture const&) = delete;
};

// Ids of graph objects in the order they are made. Cgraph's own discipline takes the address
// of a name's pooled string as its id, and keeps subgraphs ordered by id: the clusters would then
// be laid out and written in an order that changes from one call to the next, with the heap.
struct SequentialIds {
  std::unordered_map<std::string, IDTYPE> byName;
  std::deque<std::string> names;  // names[i] has id 2 * (i + 1); a deque keeps them in place
  IDTYPE anonymous = 1;           // anonymous objects take odd ids, as cgraph's own
};

void* openIds(Agraph_t*, Agdisc_t*) { return new SequentialIds(); }

long mapId(void* state, int, char* name, IDTYPE* id, int create) {
  auto& ids = *static_cast<SequentialIds*>(state);
  if (name == nullptr) {
    *id = ids.anonymous;
    ids.anonymous += 2;
    return 1;
  }
  auto const known = ids.byName.find(name);
  if (known != ids.byName.end()) {
    *id = known->second;
    return 1;
  }
  // As cgraph's own discipline: a name never seen maps to an id no object has.
  *id = 0;
  if (create == 0) return 1;
  ids.names.emplace_back(name);
  *id = static_cast<IDTYPE>(2 * ids.names.size());
  ids.byName.emplace(ids.names.back(), *id);
  return 1;
}

long allocId(void*, int, IDTYPE) { return 0; }
void freeId(void*, int, IDTYPE) {}

char* printId(void* state, int, IDTYPE id) {
  auto& ids = *static_cast<SequentialIds*>(state);
  if (id == 0 || id % 2 != 0 || id / 2 > ids.names.size()) return nullptr;
  return &ids.names[static_cast<std::size_t>(id / 2 - 1)][0];
}

void closeIds(void* state) { delete static_cast<SequentialIds*>(state); }
void registerId(void*, int, void*) {}

Agiddisc_t sequentialIds = {openIds, mapId, allocId, freeId, printId, closeIds, registerId};

// The DOT text as the lexer wants it: one line per read.
struct TextReader {
  char const* data;
  std::size_t size;
  std::size_t at;
};

int readLine(void* channel, char* buffer, int size) {
  auto& reader = *static_cast<TextReader*>(channel);
  if (size <= 0 || reader.at >= reader.size) return 0;
  int length = 0;
  while (reader.at < reader.size && length < size) {
    char const c = reader.data[reader.at++];
    buffer[length++] = c;
    if (c == '\n') break;
  }
  return length;
}

struct ContextFree {
  void operator()(GVC_t* context) const { gvFreeContext(context); }
};
struct GraphClose {
  void operator()(Agraph_t* graph) const { agclose(graph); }
};

// A laid-out graph and its context; frees the layout, the graph and the context in that order.
class Layout {
 public:
  explicit Layout(std::string const& dot) {
    // Built-ins only, and no loading on demand: the plugin directory is never read.
    context_.reset(gvContextPlugins(builtins, 0));
    if (!context_) throw std::runtime_error("Graphviz: cannot make a context");
    reader_ = TextReader{dot.data(), dot.size(), 0};
    Agdisc_t discipline = {&AgMemDisc, &sequentialIds, &io_};
    graph_.reset(agread(&reader_, &discipline));
    // The scanner keeps what it read past the graph, and its line count, in globals until the
    // next read, which would start inside the old text (and count its errors from the wrong
    // line). Destroying it after each read makes the next one start fresh and frees its buffer.
    aaglex_destroy();
    agreadline(1);
    if (!graph_) throw failure("the text is not DOT");
    if (gvLayout(context_.get(), graph_.get(), "dot") != 0) throw failure("the layout failed");
    laidOut_ = true;
  }
  ~Layout() {
    if (laidOut_) gvFreeLayout(context_.get(), graph_.get());
  }
  Layout(Layout const&) = delete;
  Layout& operator=(Layout const&) = delete;

  std::string svg() {
    char* data = nullptr;
    unsigned int length = 0;
    if (gvRenderData(context_.get(), graph_.get(), "svg", &data, &length) != 0) {
      if (data != nullptr) gvFreeRenderData(data);
      throw failure("rendering SVG failed");
    }
    std::string text(data, length);
    gvFreeRenderData(data);
    return text;
  }

 private:
  static std::runtime_error failure(std::string const& what) {
    std::string message = "Graphviz: " + what;
    std::string detail = lastError;
    while (!detail.empty() && (detail.back() == '\n' || detail.back() == ' ')) detail.pop_back();
    if (!detail.empty()) message += ": " + detail;
    return std::runtime_error(message);
  }

  // Destroyed in reverse: the graph, then the context, then the rest. The graph keeps a pointer
  // to the reading discipline for as long as it lives.
  ErrorCapture errors_;
  TextReader reader_{nullptr, 0, 0};
  Agiodisc_t io_ = {readLine, AgIoDisc.putstr, AgIoDisc.flush};
  std::unique_ptr<GVC_t, ContextFree> context_;
  std::unique_ptr<Agraph_t, GraphClose> graph_;
  bool laidOut_ = false;
};

}  // namespace

std::string SvgRenderer::render(std::string const& dot) {
  std::lock_guard<std::mutex> lock(graphvizMutex);
  Layout layout(dot);
  return layout.svg();
}

void SvgRenderer::layoutOnly(std::string const& dot) {
  std::lock_guard<std::mutex> lock(graphvizMutex);
  Layout layout(dot);
}

}  // namespace qvviews
