#include "platform/dispatch/HandlerLibrary.h"

#include <dlfcn.h>

#include <memory>
#include <stdexcept>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/dispatch/RequestHandler.h"

namespace dispatch {
namespace server {
namespace {

std::string loaderError() {
  char const* text = dlerror();
  return text != nullptr ? text : "unknown reason";
}

}  // namespace

HandlerLibrary::HandlerLibrary(std::string const& path) : path_(path) {
  // RTLD_NODELETE: code of the library runs until the process ends (see the header).
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (handle == nullptr) {
    throw std::runtime_error("cannot load service library '" + path + "': " + loaderError());
  }
  dlerror();
  void* symbol = dlsym(handle, kFactoryName);
  if (symbol == nullptr) {
    throw std::runtime_error("service library '" + path + "' has no symbol '" +
                             kFactoryName + "': " + loaderError());
  }
  factory_ = reinterpret_cast<Factory>(symbol);
}

RequestHandler& HandlerLibrary::makeHandler(ConnectionMgr& connections) const {
  std::unique_ptr<RequestHandler> handler(factory_(connections));
  if (!handler) {
    throw std::runtime_error("makeHandler of '" + path_ + "' returned no handler");
  }
  return connections.adoptHandler(std::move(handler));
}

}  // namespace server
}  // namespace dispatch
