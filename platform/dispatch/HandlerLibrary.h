// Loads a service library and makes its handler, the way the compile server does.
#ifndef PLATFORM_DISPATCH_HANDLERLIBRARY_H_
#define PLATFORM_DISPATCH_HANDLERLIBRARY_H_

#include <string>

namespace dispatch {
namespace server {

class ConnectionMgr;
class RequestHandler;

// A service library opened with dlopen. The library must export, with C linkage,
//   dispatch::server::RequestHandler* makeHandler(dispatch::server::ConnectionMgr&);
// which returns a handler that registered itself with the ConnectionMgr.
//
// The library stays loaded for the rest of the process, also after this object is gone: the
// handlers and session tables it made run its code until the very end.
class HandlerLibrary {
 public:
  using Factory = RequestHandler* (*)(ConnectionMgr&);
  static constexpr char const* kFactoryName = "makeHandler";

  // Opens the library at `path` and finds its factory. Throws std::runtime_error naming the path
  // and the loader's reason when either fails.
  explicit HandlerLibrary(std::string const& path);

  // Calls the factory and hands the new handler to `connections`, which owns it from then on.
  // Throws std::runtime_error if the factory returns no handler.
  RequestHandler& makeHandler(ConnectionMgr& connections) const;

  std::string const& path() const { return path_; }

 private:
  std::string path_;
  Factory factory_ = nullptr;
};

}  // namespace server
}  // namespace dispatch

#endif  // PLATFORM_DISPATCH_HANDLERLIBRARY_H_
