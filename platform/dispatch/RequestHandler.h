// Base of every service that the compile server routes requests to.
#ifndef PLATFORM_DISPATCH_REQUESTHANDLER_H_
#define PLATFORM_DISPATCH_REQUESTHANDLER_H_

#include <string>

#include "proto/dispatch.pb.h"

namespace dispatch {
namespace server {

class ConnectionMgr;

// A service: registered under its name with a ConnectionMgr, which routes the requests that
// name that service to handle_request.
//
// The handler registers itself in its constructor and unregisters itself in its destructor; it
// does not own the ConnectionMgr, which must outlive it. Who owns the handler is the creator's
// choice: ConnectionMgr::adoptHandler takes it over.
class RequestHandler {
 public:
  // Registers under `name`. Throws std::invalid_argument if a handler of that name is registered.
  RequestHandler(std::string const& name, ConnectionMgr& connections);
  virtual ~RequestHandler();

  RequestHandler(RequestHandler const&) = delete;
  RequestHandler& operator=(RequestHandler const&) = delete;

  // Serves one request. Every outcome is written into `response`.
  virtual void handle_request(Request const& request, Response& response) = 0;

  std::string const& getName() const { return name_; }
  Version const& getVersion() const { return version_; }

  // Whether this service may serve `request`. On false `response` holds the answer already:
  // 404 for a request that names another service, 400 for one whose version has another major
  // number than this service's. A request that carries no version passes.
  bool validateRequest(Request const& request, Response& response) const;

  // The UUID of the session the request belongs to, as it stands (possibly empty).
  std::string sessionFromRequest(Request const& request) const;

  // Records the version this service speaks, from "MAJOR.MINOR.PATCH"; missing trailing parts
  // are 0. Throws std::invalid_argument, naming the text and the service, for anything else;
  // the recorded version is then unchanged.
  void setVersionFromString(std::string const& text);

  // Sets the status of `response` to `code` with the code's standard text: "OK",
  // "Bad Request", "Not Found", "Internal Server Error" ("Unknown Status" for any other code).
  // The payload is left as it is.
  static void stockResponse(StatusResponse_Code code, Response& response);
  static std::string stockText(StatusResponse_Code code);

 private:
  std::string name_;
  Version version_;
  ConnectionMgr& connections_;
};

}  // namespace server
}  // namespace dispatch

#endif  // PLATFORM_DISPATCH_REQUESTHANDLER_H_
