// A session's whole life as the compile server drives it: through the ConnectionMgr, with real
// requests.
#include <fstream>
#include <sstream>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "platform/dispatch/ConnectionMgr.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/LoggerCapture.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"

namespace {

namespace wire = dispatch::system_diagram_server;
using dispatch::server::HCSExceptionNoSessionFound;
using dispatch::server::HCSExceptionUuidAlreadyInUse;
using qvtest::requestFor;

class SessionLifeTest : public ::testing::Test {
 protected:
  SessionLifeTest() {
    connections.adoptHandler(std::unique_ptr<dispatch::server::RequestHandler>(
        makeHandler(connections)));
    handler = static_cast<IPA::SystemDiagramHandler*>(
        connections.findHandler("dispatch.system_diagram_server"));
  }

  dispatch::Response send(std::string const& uuid, google::protobuf::Message const& message) {
    dispatch::Response response;
    connections.dispatch(requestFor(uuid, message), response);
    return response;
  }

  dispatch::Response write(std::string const& uuid, std::string const& path) {
    wire::WriteSystemDiagram message;
    message.set_path(path);
    return send(uuid, message);
  }

  dispatch::Response read(std::string const& uuid, std::string const& path) {
    wire::ReadSystemDiagram message;
    message.set_path(path);
    return send(uuid, message);
  }

  static std::string contents(std::string const& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  }

  static dispatch::Session session(std::string const& uuid) {
    dispatch::Session made;
    made.set_uuid(uuid);
    made.set_name("life");
    return made;
  }

  template <class E, class Call>
  static std::string thrown(Call call) {
    try {
      call();
    } catch (E const& error) {
      EXPECT_EQ(typeid(error), typeid(E));
      return error.what();
    }
    ADD_FAILURE() << "no exception";
    return "";
  }

  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler* handler = nullptr;
  qvtest::TempDir dir;
};

TEST_F(SessionLifeTest, CreateWriteReadForkRemove) {
  dispatch::Session const created = connections.createSession(dispatch::Session());
  std::string const uuid = created.uuid();
  ASSERT_EQ(uuid.size(), 36u);

  // The empty diagram, written and read back.
  std::string const empty = dir.file("empty.json");
  ASSERT_STATUS(write(uuid, empty), 200);
  EXPECT_EQ(contents(empty),
            "{\n"
            " \"system_diagram_metadata\": {\n"
            "  \"schema_version\": {\n"
            "   \"major\": \"2\",\n"
            "   \"minor\": \"0\",\n"
            "   \"patch\": \"0\"\n"
            "  }\n"
            " }\n"
            "}\n"
            // The printer ends its text with a newline, and the writer adds one of its own.
            "\n");
  ASSERT_STATUS(read(uuid, empty), 200);

  // A diagram with content, read in and forked.
  std::string const named = dir.file("named.json");
  {
    std::ofstream out(named);
    out << R"({"system_diagram_metadata": {"qsa": {"name": "board_a", "vendor": "acme"}}})";
  }
  ASSERT_STATUS(read(uuid, named), 200);
  dispatch::system_diagram_server::UpsertKernelUse report;
  report.set_designstate("Routed");
  auto* kernel = report.add_kerneluses();
  kernel->set_kernelname("vadd");
  kernel->add_computeunituses()->set_computeunitname("vadd_1");
  handler->getDiagramForSession(uuid).kernelUse.mergeFrom(report);

  dispatch::Session target;
  target.set_name("fork");
  std::string const forked = connections.forkSession(uuid, target).uuid();
  ASSERT_EQ(forked.size(), 36u);
  ASSERT_NE(forked, uuid);
  std::string const fromSource = dir.file("source.json");
  std::string const fromFork = dir.file("fork.json");
  ASSERT_STATUS(write(uuid, fromSource), 200);
  ASSERT_STATUS(write(forked, fromFork), 200);
  EXPECT_EQ(contents(fromFork), contents(fromSource));
  EXPECT_NE(contents(fromFork).find("\"vendor\": \"acme\""), std::string::npos);
  EXPECT_EQ(handler->getDiagramForSession(uuid).kernelUse.snapshot().size(), 1u);
  EXPECT_TRUE(handler->getDiagramForSession(forked).kernelUse.snapshot().empty());

  // Removed: the session's requests fail, the fork lives on.
  connections.removeSession(session(uuid));
  qvtest::LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(write(uuid, dir.file("gone.json")), 500);
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no "
                        "session with UUID '" +
                            uuid + "'.\n");
  EXPECT_STATUS(write(forked, dir.file("still.json")), 200);

  // The same UUID again is a new, empty session.
  connections.createSession(session(uuid));
  std::string const again = dir.file("again.json");
  ASSERT_STATUS(write(uuid, again), 200);
  EXPECT_EQ(contents(again), contents(empty));
}

TEST_F(SessionLifeTest, SessionTableFailuresReachTheServerWithTheirTypes) {
  connections.createSession(session("u1"));
  EXPECT_EQ(thrown<HCSExceptionUuidAlreadyInUse>([&] { connections.createSession(session("u1")); }),
            "SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: 'u1'");
  EXPECT_EQ(thrown<HCSExceptionUuidAlreadyInUse>(
                [&] { connections.forkSession("u1", session("u1")); }),
            "SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: 'u1'");
  EXPECT_EQ(thrown<HCSExceptionNoSessionFound>(
                [&] { connections.forkSession("nope", session("u2")); }),
            "SYSTEM_DIAGRAM: ERROR, no session with UUID 'nope' found to fork from");
  EXPECT_EQ(thrown<HCSExceptionNoSessionFound>(
                [&] { connections.removeSession(session("nope")); }),
            "SYSTEM_DIAGRAM: ERROR, no session with UUID 'nope' found to remove");
  EXPECT_EQ(thrown<std::runtime_error>([&] { connections.removeSession(session("")); }),
            "SYSTEM_DIAGRAM: ERROR while trying to close session, provided session doesn't "
            "have a UUID.");
  EXPECT_EQ(thrown<std::runtime_error>([&] { connections.forkSession("", session("u3")); }),
            "SYSTEM_DIAGRAM: ERROR, UUID is empty in forkSession");
  EXPECT_EQ(handler->getSessionTable()->sessions.size(), 1u);
}

TEST_F(SessionLifeTest, RequestForAnotherServiceIsAnswered404ByTheConnectionMgr) {
  dispatch::Request request = requestFor("u1", wire::WriteSystemDiagram());
  request.set_service("dispatch.nobody");
  dispatch::Response response;
  connections.dispatch(request, response);
  EXPECT_STATUS(response, 404);
}

}  // namespace
