// Fuzz target: the actual resources document, through both of its readers.
//
// The bytes are the document. First the validating reader a caller outside the library uses:
// ActualResourcesTree, ActualResourcesSchemaValidationVisitor, then
// ActualResourcesComputeUnitVisitor into a diagram that has compute units. Then the walk of the
// UtilizationDuringBrenloRun request ("utilizationFiles"), driven through the service's own
// entry point, SystemDiagramHandler::handle_request, with the bytes as the one file named: the
// request must answer with a status, whatever the file holds.
#include <boost/property_tree/exceptions.hpp>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "fuzz/FuzzSupport.h"
#include "platform/dispatch/ConnectionMgr.h"
#include "proto/dispatch.pb.h"
#include "proto/system_diagram.pb.h"
#include "proto/system_diagram_server.pb.h"
#include "resources/ActualResourcesComputeUnitVisitor.h"
#include "resources/ActualResourcesSchemaValidationVisitor.h"
#include "resources/ActualResourcesTree.h"
#include "service/SystemDiagramHandler.h"

namespace {

namespace wire = dispatch::system_diagram_server;

// A small diagram whose compute units vadd_1 and vadd_2 are also in the seeds: reports land on
// them. (The example design's whole diagram is ten times the size and makes every input slower.)
std::string const& diagramText() {
  static std::string const text = qvfuzz::readFile(qvfuzz::testDataFile("diagrams/base.json"));
  return text;
}

// The validating reader, as its documentation tells a caller to use it.
void readValidated(std::string const& document) {
  std::istringstream in(document);
  std::unique_ptr<IPA::ActualResourcesTree> tree;
  try {
    tree = std::make_unique<IPA::ActualResourcesTree>(in);
  } catch (boost::property_tree::ptree_error const&) {
    return;  // not JSON
  }
  try {
    IPA::ActualResourcesSchemaValidationVisitor().visit(*tree);
  } catch (boost::property_tree::ptree_error const&) {
    return;  // a version member missing
  } catch (std::runtime_error const&) {
    return;  // a version this library does not read
  }
  IPA::ProfileAnalyzerSystemDiagram diagram(
      std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>());
  std::istringstream stored(diagramText());
  diagram.serializeFromJson(stored);
  // Documented to throw only when writing an entry into the diagram fails, which a diagram
  // read from the test file never does: so no catch here.
  IPA::ActualResourcesComputeUnitVisitor(&diagram).visit(*tree);
  std::ostringstream written;
  diagram.serializeToJson(written);
}

// The service with one session that holds that diagram, made once per process. Each
// input gets a fresh session, so that the reports of one input do not pile up under the next.
class Service {
 public:
  Service() : handler(connections) {}

  void utilization(std::string const& path) {
    dispatch::Session session;
    session.set_name("fuzz");
    session = connections.createSession(session);
    wire::ReadSystemDiagram read;
    read.set_path(diagramPath());
    expectStatus(serve(session.uuid(), read), 200);

    wire::UtilizationDuringBrenloRun message;
    message.add_utilizationfiles(path);
    dispatch::Response const response = serve(session.uuid(), message);
    // 200, 400 for an entry without a state, kernel or compute unit name, 500 for a file that
    // is not JSON. Anything else, or no status at all, is a finding.
    if (!response.has_status()) std::abort();
    int const code = response.status().code();
    if (code != 200 && code != 400 && code != 500) std::abort();

    // The session goes on: its diagram is written as WriteSystemDiagram would write it.
    std::ostringstream written;
    handler.getDiagramForSession(session.uuid()).systemDiagram.serializeToJson(written);
    connections.removeSession(session);
  }

 private:
  static std::string const& diagramPath() {
    static std::string const path = qvfuzz::testDataFile("diagrams/base.json");
    return path;
  }

  dispatch::Response serve(std::string const& uuid, google::protobuf::Message const& payload) {
    dispatch::Request request;
    request.set_service("dispatch.system_diagram_server");
    request.set_session_uuid(uuid);
    request.mutable_payload()->PackFrom(payload);
    dispatch::Response response;
    handler.handle_request(request, response);
    return response;
  }

  static void expectStatus(dispatch::Response const& response, int code) {
    if (!response.has_status() || response.status().code() != code) std::abort();
  }

  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler;
};

Service& service() {
  // Never destroyed: it lives until the process ends, like the compile server's handler.
  static Service* const instance = new Service;
  return *instance;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const document(reinterpret_cast<char const*>(data), size);
  readValidated(document);
  service().utilization(qvfuzz::writeScratchFile(data, size));
  return 0;
}
