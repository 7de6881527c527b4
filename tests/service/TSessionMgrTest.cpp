#include "service/TSessionMgr.h"

#include <sstream>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "diagram/SystemDiagram.h"
#include "tests/support/LoggerCapture.h"

namespace {

using dispatch::server::HCSExceptionNoSessionFound;
using dispatch::server::HCSExceptionUuidAlreadyInUse;
using qvtest::LoggerCapture;

class TSessionMgrTest : public ::testing::Test {
 protected:
  static dispatch::Session session(std::string const& uuid, std::string const& name = "") {
    dispatch::Session made;
    made.set_uuid(uuid);
    made.set_name(name);
    return made;
  }

  // The JSON text of a session's diagram.
  std::string json(std::string const& uuid) {
    std::ostringstream out;
    table.sessions.at(uuid).systemDiagram.serializeToJson(out);
    return out.str();
  }

  // Gives a session's diagram a platform name, so that copies and replacements show.
  void nameBoard(std::string const& uuid, std::string const& name) {
    std::istringstream in(R"({"system_diagram_metadata": {"qsa": {"name": ")" + name + "\"}}}");
    table.sessions.at(uuid).systemDiagram.serializeFromJson(in);
  }

  static std::string freshJson() {
    IPA::SystemDiagram fresh;
    std::ostringstream out;
    fresh.systemDiagram.serializeToJson(out);
    return out.str();
  }

  // Runs `call`, expects an exception of exactly type E, and returns its text.
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

  dispatch::server::TSessionMgr<IPA::SystemDiagram> table{"SYSTEM_DIAGRAM"};
};

TEST_F(TSessionMgrTest, CreateAddsAnEmptyDiagramAndLogsTheEvent) {
  LoggerCapture log(dispatch::server::kLogEvent);
  table.createSession(session("u1", "first"));
  ASSERT_EQ(table.sessions.count("u1"), 1u);
  EXPECT_EQ(json("u1"), freshJson());
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM: creating session with uuid: 'u1' and name 'first'\n");
}

TEST_F(TSessionMgrTest, CreateWithEmptyUuidThrowsAndLogsAtLevelZero) {
  LoggerCapture log(dispatch::server::kLogError);
  EXPECT_EQ(thrown<std::runtime_error>([&] { table.createSession(session("", "nameless")); }),
            "SYSTEM_DIAGRAM: ERROR, UUID is empty in createSession");
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM: ERROR, UUID is empty in createSession\n");
  EXPECT_TRUE(table.sessions.empty());
}

TEST_F(TSessionMgrTest, CreatingAUuidTwiceFailsAndKeepsTheFirstDiagram) {
  table.createSession(session("u1"));
  nameBoard("u1", "board_a");
  std::string const before = json("u1");
  LoggerCapture log(dispatch::server::kLogEvent);
  EXPECT_EQ(thrown<HCSExceptionUuidAlreadyInUse>([&] { table.createSession(session("u1")); }),
            "SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: 'u1'");
  EXPECT_EQ(log.text(), "");
  EXPECT_EQ(json("u1"), before);
  EXPECT_NE(before.find("board_a"), std::string::npos);
}

TEST_F(TSessionMgrTest, ForkCopiesTheDiagramAndLogsTheSourceOnly) {
  table.createSession(session("u1"));
  nameBoard("u1", "board_a");
  LoggerCapture log(dispatch::server::kLogEvent);
  table.forkSession("u1", "u2");
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM: Forking session from session with uuid: 'u1'\n");
  EXPECT_EQ(json("u2"), json("u1"));
  EXPECT_NE(json("u2").find("board_a"), std::string::npos);
}

TEST_F(TSessionMgrTest, ForkCarriesTheDiagramButNotTheKernelUse) {
  table.createSession(session("u1"));
  dispatch::system_diagram_server::UpsertKernelUse report;
  report.set_designstate("Routed");
  auto* unit = report.add_kerneluses();
  unit->set_kernelname("vadd");
  unit->add_computeunituses()->set_computeunitname("vadd_1");
  table.sessions.at("u1").kernelUse.mergeFrom(report);
  table.forkSession("u1", "u2");
  EXPECT_EQ(table.sessions.at("u1").kernelUse.snapshot().size(), 1u);
  EXPECT_TRUE(table.sessions.at("u2").kernelUse.snapshot().empty());
}

TEST_F(TSessionMgrTest, ForkingFromANeverPopulatedDiagramGivesASecondEmptyDiagram) {
  table.createSession(session("u1"));
  table.forkSession("u1", "u2");
  EXPECT_EQ(json("u2"), freshJson());
}

TEST_F(TSessionMgrTest, ForkingToItsOwnUuidFailsBecauseTheTargetIsTestedFirst) {
  table.createSession(session("u1"));
  EXPECT_EQ(thrown<HCSExceptionUuidAlreadyInUse>([&] { table.forkSession("u1", "u1"); }),
            "SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: 'u1'");
  EXPECT_EQ(table.sessions.size(), 1u);
}

TEST_F(TSessionMgrTest, ForkingFromAMissingSourceToATakenTargetReportsTheTarget) {
  table.createSession(session("taken"));
  EXPECT_EQ(thrown<HCSExceptionUuidAlreadyInUse>([&] { table.forkSession("missing", "taken"); }),
            "SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: 'taken'");
}

TEST_F(TSessionMgrTest, ForkingFromAMissingSourceFails) {
  LoggerCapture log(dispatch::server::kLogEvent);
  EXPECT_EQ(thrown<HCSExceptionNoSessionFound>([&] { table.forkSession("missing", "u2"); }),
            "SYSTEM_DIAGRAM: ERROR, no session with UUID 'missing' found to fork from");
  EXPECT_TRUE(table.sessions.empty());
  EXPECT_EQ(log.text(), "");
}

TEST_F(TSessionMgrTest, ForkWithAnEmptyUuidThrowsAndLogsAtLevelZero) {
  table.createSession(session("u1"));
  LoggerCapture log(dispatch::server::kLogError);
  EXPECT_EQ(thrown<std::runtime_error>([&] { table.forkSession("", "u2"); }),
            "SYSTEM_DIAGRAM: ERROR, UUID is empty in forkSession");
  EXPECT_EQ(thrown<std::runtime_error>([&] { table.forkSession("u1", ""); }),
            "SYSTEM_DIAGRAM: ERROR, UUID is empty in forkSession");
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM: ERROR, UUID is empty in forkSession\n"
            "SYSTEM_DIAGRAM: ERROR, UUID is empty in forkSession\n");
  EXPECT_EQ(table.sessions.size(), 1u);
}

TEST_F(TSessionMgrTest, RemoveDestroysTheDiagramAndLogsTheEvent) {
  table.createSession(session("u1", "first"));
  LoggerCapture log(dispatch::server::kLogEvent);
  table.removeSession(session("u1", "first"), false);
  EXPECT_TRUE(table.sessions.empty());
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM: closing session for UUID 'u1' with name 'first'\n");
}

TEST_F(TSessionMgrTest, RemoveBehavesTheSameForBothFlagValues) {
  for (bool flag : {false, true}) {
    table.createSession(session("u1", "n"));
    LoggerCapture log(dispatch::server::kLogEvent);
    table.removeSession(session("u1", "n"), flag);
    EXPECT_TRUE(table.sessions.empty()) << flag;
    EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM: closing session for UUID 'u1' with name 'n'\n");
    EXPECT_EQ(thrown<HCSExceptionNoSessionFound>([&] { table.removeSession(session("u1"), flag); }),
              "SYSTEM_DIAGRAM: ERROR, no session with UUID 'u1' found to remove");
  }
}

TEST_F(TSessionMgrTest, RemoveWithAnEmptyUuidThrowsWithoutLogging) {
  table.createSession(session("u1"));
  LoggerCapture log(dispatch::server::kLogTrace);
  EXPECT_EQ(thrown<std::runtime_error>([&] { table.removeSession(session(""), false); }),
            "SYSTEM_DIAGRAM: ERROR while trying to close session, provided session doesn't "
            "have a UUID.");
  EXPECT_EQ(log.text(), "");
  EXPECT_EQ(table.sessions.size(), 1u);
}

TEST_F(TSessionMgrTest, CreatingARemovedUuidAgainGivesANewEmptyDiagram) {
  table.createSession(session("u1"));
  nameBoard("u1", "board_a");
  table.removeSession(session("u1"), false);
  table.createSession(session("u1"));
  EXPECT_EQ(json("u1"), freshJson());
}

TEST_F(TSessionMgrTest, MessagesOpenWithTheTableName) {
  dispatch::server::TSessionMgr<IPA::SystemDiagram> other("OTHER_TABLE");
  EXPECT_EQ(thrown<HCSExceptionNoSessionFound>([&] { other.removeSession(session("x"), true); }),
            "OTHER_TABLE: ERROR, no session with UUID 'x' found to remove");
}

// A payload whose copy fails, to see what a failed fork leaves behind.
struct FailingCopy {
  FailingCopy() = default;
  FailingCopy& operator=(FailingCopy const&) { throw std::runtime_error("copy failed"); }
};

TEST_F(TSessionMgrTest, FailedForkLeavesTheTargetEntryBehind) {
  dispatch::server::TSessionMgr<FailingCopy> failing("FAILING");
  failing.createSession(session("u1"));
  EXPECT_EQ(thrown<std::runtime_error>([&] { failing.forkSession("u1", "u2"); }), "copy failed");
  EXPECT_EQ(failing.sessions.count("u2"), 1u);
  // The mutex was released on the way out, and the leftover target now blocks a new fork.
  EXPECT_EQ(thrown<HCSExceptionUuidAlreadyInUse>([&] { failing.forkSession("u1", "u2"); }),
            "FAILING: ERROR, a session already exists with UUID: 'u2'");
}

}  // namespace
