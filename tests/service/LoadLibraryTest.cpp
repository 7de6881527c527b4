// The library as the compile server sees it: loaded with dlopen, its factory found by name.
// This executable links only the platform, never the library's code, so everything it reaches
// goes through the loaded libqv_system_diagram.so.
#include <cxxabi.h>

#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/dispatch/HandlerLibrary.h"
#include "proto/system_diagram_server.pb.h"
#include "tests/support/LoggerCapture.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"

namespace {

class LoadLibraryTest : public ::testing::Test {
 protected:
  static dispatch::Session session(std::string const& uuid) {
    dispatch::Session made;
    made.set_uuid(uuid);
    return made;
  }

  // The mangled name of the exception in flight when `call` throws.
  template <class Call>
  static std::string thrownTypeName(Call call) {
    try {
      call();
    } catch (std::runtime_error const&) {
      return abi::__cxa_current_exception_type()->name();
    }
    ADD_FAILURE() << "no exception";
    return "";
  }

  dispatch::server::ConnectionMgr connections;
  qvtest::TempDir dir;
};

TEST_F(LoadLibraryTest, MakeHandlerIsFoundByNameAndServesARequest) {
  dispatch::server::HandlerLibrary library(QV_LIBRARY_PATH);
  dispatch::server::RequestHandler& handler = library.makeHandler(connections);
  EXPECT_EQ(handler.getName(), "dispatch.system_diagram_server");
  EXPECT_EQ(connections.getSessionMgr()->numHandlers(), 1u);

  connections.createSession(session("loaded"));
  dispatch::system_diagram_server::WriteSystemDiagram write;
  write.set_path(dir.file("loaded.json"));
  dispatch::Response response;
  connections.dispatch(qvtest::requestFor("loaded", write), response);
  EXPECT_STATUS(response, 200);
  std::ifstream written(dir.file("loaded.json"));
  std::string firstLine;
  std::getline(written, firstLine);
  EXPECT_EQ(firstLine, "{");
}

TEST_F(LoadLibraryTest, FailuresInsideTheLibraryBecome500) {
  dispatch::server::HandlerLibrary library(QV_LIBRARY_PATH);
  library.makeHandler(connections);
  qvtest::LoggerCapture log(dispatch::server::kLogException);
  dispatch::system_diagram_server::WriteSystemDiagram write;
  write.set_path(dir.file("never.json"));
  dispatch::Response response;
  connections.dispatch(qvtest::requestFor("unknown", write), response);
  EXPECT_STATUS(response, 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no session with "
            "UUID 'unknown'.\n");
}

TEST_F(LoadLibraryTest, SessionTableExceptionsCrossTheBoundaryWithTheirTypes) {
  dispatch::server::HandlerLibrary library(QV_LIBRARY_PATH);
  library.makeHandler(connections);
  connections.createSession(session("taken"));
  EXPECT_EQ(thrownTypeName([&] { connections.createSession(session("taken")); }),
            "N8dispatch6server28HCSExceptionUuidAlreadyInUseE");
  EXPECT_EQ(thrownTypeName([&] { connections.removeSession(session("absent")); }),
            "N8dispatch6server26HCSExceptionNoSessionFoundE");
}

TEST_F(LoadLibraryTest, LoadingTheLibraryTwiceGivesTheSameFactory) {
  dispatch::server::HandlerLibrary first(QV_LIBRARY_PATH);
  dispatch::server::HandlerLibrary second(QV_LIBRARY_PATH);
  first.makeHandler(connections);
  dispatch::server::ConnectionMgr other;
  second.makeHandler(other);
  EXPECT_NE(connections.findHandler("dispatch.system_diagram_server"), nullptr);
  EXPECT_NE(other.findHandler("dispatch.system_diagram_server"), nullptr);
}

TEST_F(LoadLibraryTest, SecondHandlerOnOneConnectionMgrIsRefused) {
  dispatch::server::HandlerLibrary library(QV_LIBRARY_PATH);
  library.makeHandler(connections);
  try {
    library.makeHandler(connections);
    FAIL() << "no exception";
  } catch (std::invalid_argument const& error) {
    EXPECT_EQ(std::string(error.what()),
              "a handler for service 'dispatch.system_diagram_server' is already registered");
  }
}

}  // namespace
