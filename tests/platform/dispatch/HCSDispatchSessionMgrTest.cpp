#include "platform/dispatch/HCSDispatchSessionMgr.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using dispatch::Session;
using dispatch::server::HCSDispatchSessionMgr;
using dispatch::server::ISessionMgr;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class HCSDispatchSessionMgrTest : public ::testing::Test {
 protected:
  // The failure a FakeTable throws; its text names the table and the call, so that a test sees
  // which of several refusals came through.
  class TableRefusal : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
  };

  // A session table that writes each call into the fixture's journal as
  // "<name> create <uuid> '<session name>'", "<name> fork <source> -> <target>",
  // "<name> remove <uuid> <flag>", then throws TableRefusal if told to refuse that call.
  class FakeTable : public ISessionMgr {
   public:
    FakeTable(std::string name, std::vector<std::string>& journal)
        : name_(std::move(name)), journal_(journal) {}

    void createSession(Session const& session) override {
      journal_.push_back(name_ + " create " + session.uuid() + " '" + session.name() + "'");
      if (refuseCreate) throw TableRefusal(name_ + " refuses create");
    }
    void forkSession(std::string const& sourceUuid, std::string const& targetUuid) override {
      journal_.push_back(name_ + " fork " + sourceUuid + " -> " + targetUuid);
      if (refuseFork) throw TableRefusal(name_ + " refuses fork");
    }
    void removeSession(Session const& session, bool flag) override {
      journal_.push_back(name_ + " remove " + session.uuid() + " " + (flag ? "true" : "false"));
      if (refuseRemove) throw TableRefusal(name_ + " refuses remove");
    }

    bool refuseCreate = false;
    bool refuseFork = false;
    bool refuseRemove = false;

   private:
    std::string name_;
    std::vector<std::string>& journal_;
  };

  // Adds a FakeTable named `name` and returns it, for the test to set its refusals.
  std::shared_ptr<FakeTable> addTable(std::string const& name) {
    auto table = std::make_shared<FakeTable>(name, journal);
    sessions.addHandler(table);
    return table;
  }

  static Session session(std::string const& uuid, std::string const& name = "") {
    Session made;
    made.set_uuid(uuid);
    made.set_name(name);
    return made;
  }

  // Runs `call`, expects a TableRefusal, and returns its text.
  template <class Call>
  static std::string refusal(Call call) {
    try {
      call();
    } catch (TableRefusal const& error) {
      return error.what();
    } catch (...) {
      ADD_FAILURE() << "an exception of another type";
      return "";
    }
    ADD_FAILURE() << "no exception";
    return "";
  }

  // The journal's entries from `first` on.
  std::vector<std::string> journalFrom(std::size_t first) const {
    if (first >= journal.size()) return {};
    return std::vector<std::string>(journal.begin() + static_cast<std::ptrdiff_t>(first),
                                    journal.end());
  }

  std::vector<std::string> journal;
  HCSDispatchSessionMgr sessions;
};

// ---- Registration -------------------------------------------------------------------------------

TEST_F(HCSDispatchSessionMgrTest, StartsWithoutTables) { EXPECT_EQ(sessions.numHandlers(), 0u); }

TEST_F(HCSDispatchSessionMgrTest, AddHandlerCountsEachTable) {
  addTable("A");
  EXPECT_EQ(sessions.numHandlers(), 1u);
  addTable("B");
  EXPECT_EQ(sessions.numHandlers(), 2u);
}

TEST_F(HCSDispatchSessionMgrTest, NullTableIsIgnored) {
  addTable("A");
  sessions.addHandler(nullptr);
  EXPECT_EQ(sessions.numHandlers(), 1u);
  // Events still reach the real table and do not trip over the null one.
  sessions.createSession(session("u-1"));
  sessions.forkSession("u-1", "u-2");
  sessions.removeSession(session("u-1"), false);
  EXPECT_THAT(journal, ElementsAre("A create u-1 ''", "A fork u-1 -> u-2", "A remove u-1 false"));
}

TEST_F(HCSDispatchSessionMgrTest, EventsWithoutTablesDoNothing) {
  EXPECT_NO_THROW(sessions.createSession(session("u-1")));
  EXPECT_NO_THROW(sessions.forkSession("u-1", "u-2"));
  EXPECT_NO_THROW(sessions.removeSession(session("u-1"), true));
}

TEST_F(HCSDispatchSessionMgrTest, TableAddedLaterTakesPartOnlyInLaterEvents) {
  addTable("A");
  sessions.createSession(session("u-1"));
  addTable("B");
  sessions.removeSession(session("u-1"), false);
  EXPECT_THAT(journal, ElementsAre("A create u-1 ''", "A remove u-1 false", "B remove u-1 false"));
}

TEST_F(HCSDispatchSessionMgrTest, TablesAreSharedWithTheirServices) {
  auto table = addTable("A");
  // The manager keeps the table alive beside the service that made it.
  EXPECT_EQ(table.use_count(), 2);
}

// ---- Fan-out in order ---------------------------------------------------------------------------

TEST_F(HCSDispatchSessionMgrTest, CreateGoesToEveryTableInTheOrderAdded) {
  addTable("A");
  addTable("B");
  addTable("C");
  sessions.createSession(session("u-1", "first"));
  EXPECT_THAT(journal,
              ElementsAre("A create u-1 'first'", "B create u-1 'first'", "C create u-1 'first'"));
}

TEST_F(HCSDispatchSessionMgrTest, ForkGoesToEveryTableInTheOrderAdded) {
  addTable("A");
  addTable("B");
  addTable("C");
  sessions.forkSession("u-1", "u-2");
  EXPECT_THAT(journal, ElementsAre("A fork u-1 -> u-2", "B fork u-1 -> u-2", "C fork u-1 -> u-2"));
}

TEST_F(HCSDispatchSessionMgrTest, RemoveGoesToEveryTableInTheOrderAddedWithItsFlag) {
  addTable("A");
  addTable("B");
  addTable("C");
  sessions.removeSession(session("u-1"), true);
  sessions.removeSession(session("u-2"), false);
  EXPECT_THAT(journal,
              ElementsAre("A remove u-1 true", "B remove u-1 true", "C remove u-1 true",
                          "A remove u-2 false", "B remove u-2 false", "C remove u-2 false"));
}

// ---- Create and fork are undone when a table refuses -------------------------------------------

TEST_F(HCSDispatchSessionMgrTest, CreateRefusedByALaterTableIsUndoneInTheEarlierOnes) {
  addTable("A");
  addTable("B");
  addTable("C")->refuseCreate = true;
  addTable("D");

  EXPECT_EQ(refusal([&] { sessions.createSession(session("u-1", "first")); }), "C refuses create");

  ASSERT_GE(journal.size(), 3u);
  EXPECT_THAT(std::vector<std::string>(journal.begin(), journal.begin() + 3),
              ElementsAre("A create u-1 'first'", "B create u-1 'first'", "C create u-1 'first'"));
  // Only the tables that took the session give it back; the refusing one and the ones after it
  // never had it.
  EXPECT_THAT(journalFrom(3), UnorderedElementsAre("A remove u-1 false", "B remove u-1 false"));
}

TEST_F(HCSDispatchSessionMgrTest, CreateRefusedByTheFirstTableTouchesNoOther) {
  addTable("A")->refuseCreate = true;
  addTable("B");
  EXPECT_EQ(refusal([&] { sessions.createSession(session("u-1")); }), "A refuses create");
  EXPECT_THAT(journal, ElementsAre("A create u-1 ''"));
}

TEST_F(HCSDispatchSessionMgrTest, CreateRethrowsTheRefusalEvenWhenTheUndoIsRefusedToo) {
  addTable("A")->refuseRemove = true;
  addTable("B");
  addTable("C")->refuseCreate = true;

  EXPECT_EQ(refusal([&] { sessions.createSession(session("u-1")); }), "C refuses create");

  // A's refusal to give the session back does not keep B from giving it back.
  EXPECT_THAT(journalFrom(3), UnorderedElementsAre("A remove u-1 false", "B remove u-1 false"));
}

TEST_F(HCSDispatchSessionMgrTest, CreateRethrowsExceptionsOfAnyType) {
  // A table that fails with something other than a std::exception still gets rolled back.
  class OddTable : public ISessionMgr {
   public:
    void createSession(Session const&) override { throw 42; }
    void forkSession(std::string const&, std::string const&) override { throw 43; }
    void removeSession(Session const&, bool) override {}
  };
  addTable("A");
  sessions.addHandler(std::make_shared<OddTable>());

  try {
    sessions.createSession(session("u-1"));
    ADD_FAILURE() << "no exception";
  } catch (int thrownValue) {
    EXPECT_EQ(thrownValue, 42);
  }
  try {
    sessions.forkSession("u-1", "u-2");
    ADD_FAILURE() << "no exception";
  } catch (int thrownValue) {
    EXPECT_EQ(thrownValue, 43);
  }
  EXPECT_THAT(journal, ElementsAre("A create u-1 ''", "A remove u-1 false", "A fork u-1 -> u-2",
                                   "A remove u-2 false"));
}

TEST_F(HCSDispatchSessionMgrTest, ForkRefusedByALaterTableRemovesTheTargetFromTheEarlierOnes) {
  addTable("A");
  addTable("B");
  addTable("C")->refuseFork = true;

  EXPECT_EQ(refusal([&] { sessions.forkSession("u-source", "u-target"); }), "C refuses fork");

  ASSERT_GE(journal.size(), 3u);
  EXPECT_THAT(std::vector<std::string>(journal.begin(), journal.begin() + 3),
              ElementsAre("A fork u-source -> u-target", "B fork u-source -> u-target",
                          "C fork u-source -> u-target"));
  // The target goes again; the source stays where it was.
  EXPECT_THAT(journalFrom(3),
              UnorderedElementsAre("A remove u-target false", "B remove u-target false"));
}

TEST_F(HCSDispatchSessionMgrTest, ForkRefusedByTheFirstTableTouchesNoOther) {
  addTable("A")->refuseFork = true;
  addTable("B");
  EXPECT_EQ(refusal([&] { sessions.forkSession("u-source", "u-target"); }), "A refuses fork");
  EXPECT_THAT(journal, ElementsAre("A fork u-source -> u-target"));
}

// ---- Remove goes on past a refusal ------------------------------------------------------------

TEST_F(HCSDispatchSessionMgrTest, RemoveReachesEveryTableAndRethrowsTheFirstRefusal) {
  addTable("A");
  addTable("B")->refuseRemove = true;
  addTable("C");
  addTable("D")->refuseRemove = true;

  EXPECT_EQ(refusal([&] { sessions.removeSession(session("u-1"), true); }), "B refuses remove");

  EXPECT_THAT(journal, ElementsAre("A remove u-1 true", "B remove u-1 true", "C remove u-1 true",
                                   "D remove u-1 true"));
}

TEST_F(HCSDispatchSessionMgrTest, RemoveRefusedByTheLastTableIsRethrown) {
  addTable("A");
  addTable("B")->refuseRemove = true;
  EXPECT_EQ(refusal([&] { sessions.removeSession(session("u-1"), false); }), "B refuses remove");
  EXPECT_THAT(journal, ElementsAre("A remove u-1 false", "B remove u-1 false"));
}

TEST_F(HCSDispatchSessionMgrTest, RemoveIsNotUndone) {
  // A remove that one table refuses is not put back in the others: there is no state to put
  // back.
  addTable("A")->refuseRemove = true;
  addTable("B");
  EXPECT_EQ(refusal([&] { sessions.removeSession(session("u-1"), false); }), "A refuses remove");
  EXPECT_THAT(journal, ElementsAre("A remove u-1 false", "B remove u-1 false"));
}

}  // namespace
