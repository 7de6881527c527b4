#include "fuzz/FuzzSupport.h"

#include <libxml/xmlerror.h>
#include <unistd.h>

#include <boost/filesystem.hpp>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <vector>

#include "platform/dispatch/Logger.h"
#include "platform/messages/ComMsgMgr.h"
#include "platform/messages/ComMsgSink.h"
#include "service/Log.h"

namespace qvfuzz {
namespace {

class DiscardingSink : public ComMsgSink {
 public:
  void show(ComMsgMgrInstance const&) override {}
};

// libxml2 reports parse and XPath errors through this; the answers say enough.
void ignoreXmlError(void*, char const*, ...) {}
void ignoreStructuredXmlError(void*, xmlErrorPtr) {}

// The scratch directory of this process, removed at exit with what it holds.
class ScratchDirectory {
 public:
  ScratchDirectory() {
    boost::filesystem::path const base = boost::filesystem::temp_directory_path();
    path_ = base / boost::filesystem::unique_path("qv-fuzz-%%%%-%%%%-%%%%");
    boost::filesystem::create_directories(path_);
  }
  ~ScratchDirectory() {
    boost::system::error_code ignored;
    boost::filesystem::remove_all(path_, ignored);
  }
  std::string file(std::string const& name) const { return (path_ / name).string(); }

 private:
  boost::filesystem::path path_;
};

ScratchDirectory& scratch() {
  // Destroyed at exit, after the last input: libFuzzer leaves through exit().
  static ScratchDirectory directory;
  return directory;
}

}  // namespace

void quiet() {
  Log::reportingLevel = logERROR + 1;
  ComMsgMgr::setSink(std::make_shared<DiscardingSink>());
  dispatch::server::Logger::setStream(nullptr);
  dispatch::server::Logger::setEcho(false);
  xmlSetGenericErrorFunc(nullptr, ignoreXmlError);
  xmlSetStructuredErrorFunc(nullptr, ignoreStructuredXmlError);
}

std::string writeScratchFile(std::uint8_t const* data, std::size_t size) {
  static std::string const path = scratch().file("input");
  std::ofstream out(path, std::ios::out | std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<char const*>(data), static_cast<std::streamsize>(size));
  out.close();
  if (!out) throw std::runtime_error("cannot write the scratch file " + path);
  return path;
}

std::string exampleFile(std::string const& name) { return std::string(QV_EXAMPLES_DIR "/") + name; }

std::string testDataFile(std::string const& name) {
  return std::string(QV_TEST_DATA_DIR "/") + name;
}

std::string readFile(std::string const& path) {
  std::ifstream in(path, std::ios::in | std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace qvfuzz
