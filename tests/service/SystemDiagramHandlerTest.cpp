#include "service/SystemDiagramHandler.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/dynamic_message.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "platform/dispatch/ConnectionMgr.h"
#include "proto/system_diagram_server.pb.h"
#include "tests/support/LoggerCapture.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"

namespace {

namespace wire = dispatch::system_diagram_server;
using qvtest::LoggerCapture;
using qvtest::requestFor;

class SystemDiagramHandlerTest : public ::testing::Test {
 protected:
  SystemDiagramHandlerTest() : handler(connections) {}

  void createSession(std::string const& uuid) {
    dispatch::Session session;
    session.set_uuid(uuid);
    session.set_name("test session");
    connections.createSession(session);
  }

  dispatch::Response serve(dispatch::Request const& request) {
    dispatch::Response response;
    handler.handle_request(request, response);
    return response;
  }

  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler;
  qvtest::TempDir dir;
};

wire::WriteSystemDiagram writeTo(std::string const& path) {
  wire::WriteSystemDiagram message;
  message.set_path(path);
  return message;
}

wire::ReadSystemDiagram readFrom(std::string const& path) {
  wire::ReadSystemDiagram message;
  message.set_path(path);
  return message;
}

TEST_F(SystemDiagramHandlerTest, RegistersTheServiceWithTheProtocolVersion) {
  EXPECT_EQ(handler.getName(), "dispatch.system_diagram_server");
  EXPECT_EQ(connections.findHandler("dispatch.system_diagram_server"), &handler);
  EXPECT_EQ(handler.getVersion().major(), 1u);
  EXPECT_EQ(handler.getVersion().minor(), 0u);
  EXPECT_EQ(handler.getVersion().patch(), 0u);
}

TEST_F(SystemDiagramHandlerTest, HandsItsSessionTableToTheSessionManager) {
  EXPECT_EQ(connections.getSessionMgr()->numHandlers(), 1u);
  EXPECT_EQ(handler.getSessionTable()->name, "SYSTEM_DIAGRAM");
  createSession("s1");
  EXPECT_EQ(handler.getSessionTable()->sessions.count("s1"), 1u);
}

TEST_F(SystemDiagramHandlerTest, SessionTableOutlivesTheHandler) {
  auto table = handler.getSessionTable();
  std::weak_ptr<IPA::SystemDiagramHandler::SessionTable> watch = table;
  table.reset();
  {
    dispatch::server::ConnectionMgr other;
    auto* made = makeHandler(other);
    auto otherTable = static_cast<IPA::SystemDiagramHandler*>(made)->getSessionTable();
    std::weak_ptr<IPA::SystemDiagramHandler::SessionTable> otherWatch = otherTable;
    otherTable.reset();
    delete made;
    // The session manager still holds its share.
    EXPECT_FALSE(otherWatch.expired());
    dispatch::Session session;
    session.set_uuid("after");
    other.createSession(session);
    EXPECT_EQ(otherWatch.lock()->sessions.count("after"), 1u);
  }
  EXPECT_FALSE(watch.expired());
}

TEST_F(SystemDiagramHandlerTest, UnknownTypeNameGetsNoStatusAndNoLogLine) {
  createSession("s1");
  LoggerCapture log(dispatch::server::kLogTrace);
  dispatch::Session notARequest;
  dispatch::Response response = serve(requestFor("s1", notARequest));
  EXPECT_FALSE(response.has_status());
  EXPECT_EQ(log.text(), "");
}

TEST_F(SystemDiagramHandlerTest, RequestWithoutPayloadGetsNoStatusAndNoLogLine) {
  createSession("s1");
  LoggerCapture log(dispatch::server::kLogTrace);
  dispatch::Request request;
  request.set_service("dispatch.system_diagram_server");
  request.set_session_uuid("s1");
  dispatch::Response response = serve(request);
  EXPECT_FALSE(response.has_status());
  EXPECT_EQ(log.text(), "");
}

TEST_F(SystemDiagramHandlerTest, UnknownSessionIsAnswered500WithOneExceptionLine) {
  createSession("s1");
  LoggerCapture log(dispatch::server::kLogException);
  dispatch::Response response = serve(requestFor("nope", writeTo(dir.file("d.json"))));
  EXPECT_STATUS(response, 500);
  EXPECT_EQ(response.status().message(), "Internal Server Error");
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no session with "
            "UUID 'nope'.\n");
  auto const& sessions = handler.getSessionTable()->sessions;
  ASSERT_EQ(sessions.size(), 1u);
  EXPECT_EQ(sessions.begin()->first, "s1");
}

TEST_F(SystemDiagramHandlerTest, EmptySessionUuidIsAnswered500) {
  LoggerCapture log(dispatch::server::kLogException);
  dispatch::Response response = serve(requestFor("", writeTo(dir.file("d.json"))));
  EXPECT_STATUS(response, 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, provided session "
            "doesn't have a UUID..\n");
  EXPECT_TRUE(handler.getSessionTable()->sessions.empty());
}

TEST_F(SystemDiagramHandlerTest, MissingRequiredFieldIsAnswered400BeforeTheSessionIsLookedUp) {
  LoggerCapture log(dispatch::server::kLogException);
  dispatch::Response response = serve(requestFor("", writeTo("")));
  EXPECT_STATUS(response, 400);
  EXPECT_EQ(response.status().message(), "Bad Request");
  response = serve(requestFor("unknown", readFrom("")));
  EXPECT_STATUS(response, 400);
  EXPECT_EQ(log.text(), "");
}

TEST_F(SystemDiagramHandlerTest, RefusedRequestNeverReachesTheSessionLookup) {
  LoggerCapture log(dispatch::server::kLogTrace);
  dispatch::Request request = requestFor("unknown", writeTo(dir.file("d.json")));
  request.set_service("another.service");
  dispatch::Response response = serve(request);
  EXPECT_STATUS(response, 404);
  EXPECT_EQ(response.status().message(), "Not Found");

  request = requestFor("unknown", writeTo(dir.file("d.json")));
  request.mutable_version()->set_major(2);
  response = serve(request);
  EXPECT_STATUS(response, 400);
  // No handler ran and nothing was thrown: not a debug line, not an exception line.
  EXPECT_EQ(log.text(), "");
}

TEST_F(SystemDiagramHandlerTest, RequestOfTheSameMajorVersionIsServed) {
  createSession("s1");
  dispatch::Request request = requestFor("s1", writeTo(dir.file("d.json")));
  request.mutable_version()->set_major(1);
  request.mutable_version()->set_minor(7);
  EXPECT_STATUS(serve(request), 200);
}

TEST_F(SystemDiagramHandlerTest, WriteLogsEntryAndLeavingAndAnswers200) {
  createSession("s1");
  LoggerCapture log(dispatch::server::kLogDebug);
  std::string const path = dir.file("d.json");
  dispatch::Response response = serve(requestFor("s1", writeTo(path)));
  EXPECT_STATUS(response, 200);
  EXPECT_EQ(response.status().message(), "OK");
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleWriteCurrentSystemDiagramRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleWriteCurrentSystemDiagramRequest\n");
  std::ifstream written(path);
  EXPECT_TRUE(written.good());
}

TEST_F(SystemDiagramHandlerTest, ReadLabelSaysEnteringTwice) {
  createSession("s1");
  std::string const path = dir.file("d.json");
  ASSERT_STATUS(serve(requestFor("s1", writeTo(path))), 200);
  LoggerCapture log(dispatch::server::kLogDebug);
  EXPECT_STATUS(serve(requestFor("s1", readFrom(path))), 200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering Entering handleReadSystemDiagramRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving Entering handleReadSystemDiagramRequest\n");
}

TEST_F(SystemDiagramHandlerTest, FailedReadLogsLeavingBeforeTheExceptionLine) {
  createSession("s1");
  LoggerCapture log(dispatch::server::kLogDebug);
  std::string const path = dir.file("missing.json");
  EXPECT_STATUS(serve(requestFor("s1", readFrom(path))), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering Entering handleReadSystemDiagramRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving Entering handleReadSystemDiagramRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: Could not open " +
                path + " for reading..\n");
}

TEST_F(SystemDiagramHandlerTest, WriteAndReadBackOverTheProtocol) {
  createSession("s1");
  std::string const first = dir.file("first.json");
  std::string const second = dir.file("second.json");
  {
    std::ofstream out(first);
    out << R"({"system_diagram_metadata": {"qsa": {"name": "board_a"}}})";
  }
  ASSERT_STATUS(serve(requestFor("s1", readFrom(first))), 200);
  ASSERT_STATUS(serve(requestFor("s1", writeTo(second))), 200);
  std::ifstream in(second);
  std::stringstream text;
  text << in.rdbuf();
  EXPECT_NE(text.str().find("\"name\": \"board_a\""), std::string::npos) << text.str();
  EXPECT_NE(text.str().find("\"major\": \"2\""), std::string::npos) << text.str();
}

TEST_F(SystemDiagramHandlerTest, PayloadThatDoesNotParseIsAnswered400) {
  createSession("s1");
  dispatch::Request request = requestFor("s1", writeTo(dir.file("d.json")));
  request.mutable_payload()->set_value(std::string("\x0a\x80", 2));  // length never ends
  EXPECT_STATUS(serve(request), 400);
  request = requestFor("s1", readFrom(dir.file("d.json")));
  request.mutable_payload()->set_value(std::string("\x0a\x80", 2));
  EXPECT_STATUS(serve(request), 400);
}

TEST_F(SystemDiagramHandlerTest, PartlyParsedPayloadIsJudgedByWhatCameOut) {
  createSession("s1");
  // A path field whose bytes are cut short still leaves a path of five NUL bytes behind, which
  // passes the field test; opening that path fails later.
  dispatch::Request request = requestFor("s1", readFrom(dir.file("d.json")));
  request.mutable_payload()->set_value(std::string("\x0a\x05", 2));
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(serve(request), 500);
  // what() is a C string, so the logged text ends at the path's first NUL.
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM_HANDLER: Caught exception: Could not open .\n");
}

TEST_F(SystemDiagramHandlerTest, GetDiagramForSessionNeverAddsASession) {
  EXPECT_THROW(handler.getDiagramForSession("ghost"), dispatch::server::HCSExceptionNoSessionFound);
  EXPECT_TRUE(handler.getSessionTable()->sessions.empty());
  try {
    handler.getDiagramForSession("");
    FAIL() << "no exception";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "SYSTEM_DIAGRAM: ERROR, provided session doesn't have a UUID.");
  }
  createSession("s1");
  IPA::SystemDiagram& first = handler.getDiagramForSession("s1");
  EXPECT_EQ(&first, &handler.getDiagramForSession("s1"));
}

TEST_F(SystemDiagramHandlerTest, TypeNamesAreComparedWhole) {
  createSession("s1");
  // A type whose full name only ends like a request type is none of them.
  dispatch::Request request = requestFor("s1", writeTo(dir.file("d.json")));
  request.mutable_payload()->set_type_url(
      "type.googleapis.com/other.dispatch.system_diagram_server.WriteSystemDiagram");
  LoggerCapture log(dispatch::server::kLogTrace);
  EXPECT_FALSE(serve(request).has_status());
  EXPECT_EQ(log.text(), "");
}

TEST_F(SystemDiagramHandlerTest, ExceptionOfUnknownTypeIsAnswered500) {
  // A diagram replaced by one that throws something that is no std::exception.
  struct Throwing : IPA::ProfileAnalyzerSystemDiagram {
    Throwing()
        : ProfileAnalyzerSystemDiagram(
              std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>()) {}
    void serializeToJson(std::ostream&) const override { throw 42; }
  };
  createSession("s1");
  handler.getDiagramForSession("s1").systemDiagram.setSystemDiagramInterface(
      std::make_shared<Throwing>());
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(serve(requestFor("s1", writeTo(dir.file("d.json")))), 500);
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM_HANDLER: Caught exception of an unknown type\n");
}

}  // namespace
