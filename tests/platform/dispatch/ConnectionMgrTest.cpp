#include "platform/dispatch/ConnectionMgr.h"

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using dispatch::Request;
using dispatch::Response;
using dispatch::Session;
using dispatch::StatusResponse;
using dispatch::server::ConnectionMgr;
using dispatch::server::HCSDispatchSessionMgr;
using dispatch::server::ISessionMgr;
using dispatch::server::RequestHandler;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// How long a test waits for something that must happen: long enough never to be reached on a
// loaded machine, short enough that a broken lock fails the test instead of hanging it.
constexpr std::chrono::seconds kMustHappen{10};
// How long a test gives something that must not happen the chance to happen anyway.
constexpr std::chrono::milliseconds kMustNotHappen{100};

class ConnectionMgrTest : public ::testing::Test {
 protected:
  // What happened, in order, across threads.
  class Journal {
   public:
    void add(std::string entry) {
      std::lock_guard<std::mutex> lock(mutex_);
      entries_.push_back(std::move(entry));
    }
    std::vector<std::string> entries() const {
      std::lock_guard<std::mutex> lock(mutex_);
      return entries_;
    }

   private:
    mutable std::mutex mutex_;
    std::vector<std::string> entries_;
  };

  // The failure a FakeTable throws when told to; its own type, so that a test can tell that the
  // exception arrives unchanged.
  class TableRefusal : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
  };

  // A session table that writes each call into the journal as "<name> create <uuid> '<name>'",
  // "<name> fork <source> -> <target>", "<name> remove <uuid> <flag>", and throws TableRefusal
  // on the calls it is told to refuse (after writing them down).
  class FakeTable : public ISessionMgr {
   public:
    FakeTable(std::string name, Journal& journal) : name_(std::move(name)), journal_(journal) {}

    void createSession(Session const& session) override {
      journal_.add(name_ + " create " + session.uuid() + " '" + session.name() + "'");
      if (refuseCreate) throw TableRefusal(name_ + " refuses create");
    }
    void forkSession(std::string const& sourceUuid, std::string const& targetUuid) override {
      journal_.add(name_ + " fork " + sourceUuid + " -> " + targetUuid);
      if (refuseFork) throw TableRefusal(name_ + " refuses fork");
    }
    void removeSession(Session const& session, bool flag) override {
      journal_.add(name_ + " remove " + session.uuid() + " " + (flag ? "true" : "false"));
      if (refuseRemove) throw TableRefusal(name_ + " refuses remove");
    }

    bool refuseCreate = false;
    bool refuseFork = false;
    bool refuseRemove = false;

   private:
    std::string name_;
    Journal& journal_;
  };

  // A session table whose createSession waits until released; forks and removes pass.
  class BlockingTable : public ISessionMgr {
   public:
    explicit BlockingTable(Journal& journal)
        : journal_(journal), released_(release_.get_future().share()) {}

    void createSession(Session const& session) override {
      entered_.set_value();
      if (released_.wait_for(kMustHappen) != std::future_status::ready) {
        journal_.add("create never released");
        return;
      }
      journal_.add("create " + session.uuid() + " ends");
    }
    void forkSession(std::string const&, std::string const&) override {}
    void removeSession(Session const&, bool) override {}

    std::future<void> entered() { return entered_.get_future(); }
    void release() { release_.set_value(); }

   private:
    Journal& journal_;
    std::promise<void> entered_;
    std::promise<void> release_;
    std::shared_future<void> released_;
  };

  // A service that answers every request 200 with "<name> served <session uuid>" and writes
  // the same into the journal.
  class FakeHandler : public RequestHandler {
   public:
    FakeHandler(std::string const& name, ConnectionMgr& connections, Journal& journal)
        : RequestHandler(name, connections), journal_(journal) {}

    void handle_request(Request const& request, Response& response) override {
      std::string const served = getName() + " served " + sessionFromRequest(request);
      journal_.add(served);
      response.mutable_status()->set_code(StatusResponse::OK);
      response.mutable_status()->set_message(served);
    }

   private:
    Journal& journal_;
  };

  // A service that runs `onDestroy` when destroyed, to watch the connection manager take it
  // down.
  class WatchedHandler : public RequestHandler {
   public:
    WatchedHandler(std::string const& name, ConnectionMgr& connections,
                   std::function<void()> onDestroy)
        : RequestHandler(name, connections), onDestroy_(std::move(onDestroy)) {}
    ~WatchedHandler() override { onDestroy_(); }
    void handle_request(Request const&, Response&) override {}

   private:
    std::function<void()> onDestroy_;
  };

  // A service whose handle_request waits, inside the request, until released.
  class BlockingHandler : public RequestHandler {
   public:
    BlockingHandler(std::string const& name, ConnectionMgr& connections, Journal& journal)
        : RequestHandler(name, connections),
          journal_(journal),
          released_(release_.get_future().share()) {}

    void handle_request(Request const&, Response& response) override {
      entered_.set_value();
      if (released_.wait_for(kMustHappen) != std::future_status::ready) {
        journal_.add("request never released");
        return;
      }
      journal_.add("request ends");
      stockResponse(StatusResponse::OK, response);
    }

    std::future<void> entered() { return entered_.get_future(); }
    void release() { release_.set_value(); }

   private:
    Journal& journal_;
    std::promise<void> entered_;
    std::promise<void> release_;
    std::shared_future<void> released_;
  };

  static Request requestFor(std::string const& service, std::string const& sessionUuid = "") {
    Request request;
    request.set_service(service);
    request.set_session_uuid(sessionUuid);
    return request;
  }

  static Session session(std::string const& uuid, std::string const& name = "") {
    Session made;
    made.set_uuid(uuid);
    made.set_name(name);
    return made;
  }

  static bool isFreshUuid(std::string const& text) {
    // gtest's own (POSIX) regular expressions: std::regex trips GCC 12's uninitialised-use
    // warning in sanitizer builds.
    return ::testing::Value(
        text, ::testing::MatchesRegex(
                  "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
  }

  // Runs `call`, expects an exception of exactly type E, and returns its text.
  template <class E, class Call>
  static std::string thrown(Call call) {
    try {
      call();
    } catch (E const& error) {
      EXPECT_EQ(typeid(error), typeid(E));
      return error.what();
    } catch (...) {
      ADD_FAILURE() << "an exception of another type";
      return "";
    }
    ADD_FAILURE() << "no exception";
    return "";
  }

  // A table registered with the connection manager's session manager.
  std::shared_ptr<FakeTable> addTable(std::string const& name) {
    auto table = std::make_shared<FakeTable>(name, journal);
    connections.getSessionMgr()->addHandler(table);
    return table;
  }

  Journal journal;
  ConnectionMgr connections;
};

// ---- Routing ------------------------------------------------------------------------------------

TEST_F(ConnectionMgrTest, RequestGoesToTheHandlerOfItsService) {
  FakeHandler alpha("dispatch.alpha", connections, journal);
  FakeHandler beta("dispatch.beta", connections, journal);

  Response response;
  connections.dispatch(requestFor("dispatch.beta", "u-1"), response);

  EXPECT_EQ(response.status().code(), 200);
  EXPECT_EQ(response.status().message(), "dispatch.beta served u-1");
  EXPECT_THAT(journal.entries(), ElementsAre("dispatch.beta served u-1"));
}

TEST_F(ConnectionMgrTest, RequestForUnknownServiceIsAnswered404) {
  FakeHandler alpha("dispatch.alpha", connections, journal);

  Response response;
  connections.dispatch(requestFor("dispatch.gamma"), response);

  EXPECT_EQ(response.status().code(), StatusResponse::NOT_FOUND);
  EXPECT_EQ(response.status().code(), 404);
  EXPECT_EQ(response.status().message(), "Not Found");
  EXPECT_THAT(journal.entries(), IsEmpty());
}

TEST_F(ConnectionMgrTest, RequestWithoutServiceIsAnswered404) {
  FakeHandler alpha("dispatch.alpha", connections, journal);
  Response response;
  connections.dispatch(requestFor(""), response);
  EXPECT_EQ(response.status().code(), 404);
  EXPECT_EQ(response.status().message(), "Not Found");
  EXPECT_THAT(journal.entries(), IsEmpty());
}

TEST_F(ConnectionMgrTest, ServiceNamesMustMatchExactly) {
  FakeHandler alpha("dispatch.alpha", connections, journal);
  for (char const* service : {"dispatch.Alpha", "dispatch.alpha ", "dispatch.alph", "alpha"}) {
    Response response;
    connections.dispatch(requestFor(service), response);
    EXPECT_EQ(response.status().code(), 404) << service;
    EXPECT_EQ(response.status().message(), "Not Found") << service;
  }
  EXPECT_THAT(journal.entries(), IsEmpty());
}

TEST_F(ConnectionMgrTest, RequestForAServiceThatIsGoneIsAnswered404) {
  { FakeHandler passing("dispatch.passing", connections, journal); }
  Response response;
  connections.dispatch(requestFor("dispatch.passing"), response);
  EXPECT_EQ(response.status().code(), 404);
  EXPECT_EQ(response.status().message(), "Not Found");
}

TEST_F(ConnectionMgrTest, FindHandlerAndServiceNamesShowTheRegisteredHandlers) {
  EXPECT_THAT(connections.serviceNames(), IsEmpty());
  EXPECT_EQ(connections.findHandler("dispatch.alpha"), nullptr);

  FakeHandler beta("dispatch.beta", connections, journal);
  FakeHandler alpha("dispatch.alpha", connections, journal);

  EXPECT_EQ(connections.findHandler("dispatch.alpha"), &alpha);
  EXPECT_EQ(connections.findHandler("dispatch.beta"), &beta);
  EXPECT_EQ(connections.findHandler("dispatch.gamma"), nullptr);
  EXPECT_THAT(connections.serviceNames(), UnorderedElementsAre("dispatch.alpha", "dispatch.beta"));
}

TEST_F(ConnectionMgrTest, RegisteringATakenNameThrows) {
  FakeHandler alpha("dispatch.alpha", connections, journal);
  EXPECT_EQ(thrown<std::invalid_argument>(
                [&] { FakeHandler again("dispatch.alpha", connections, journal); }),
            "a handler for service 'dispatch.alpha' is already registered");
  EXPECT_EQ(connections.findHandler("dispatch.alpha"), &alpha);
}

// ---- adoptHandler and destruction ---------------------------------------------------------------

TEST_F(ConnectionMgrTest, AdoptedHandlerServesAndIsTheSameObject) {
  auto made = std::make_unique<FakeHandler>("dispatch.alpha", connections, journal);
  RequestHandler* const raw = made.get();

  RequestHandler& adopted = connections.adoptHandler(std::move(made));

  EXPECT_EQ(&adopted, raw);
  EXPECT_EQ(connections.findHandler("dispatch.alpha"), raw);
  Response response;
  connections.dispatch(requestFor("dispatch.alpha", "u-7"), response);
  EXPECT_EQ(response.status().message(), "dispatch.alpha served u-7");
}

TEST_F(ConnectionMgrTest, AdoptingNoHandlerThrows) {
  EXPECT_EQ(thrown<std::invalid_argument>([&] { connections.adoptHandler(nullptr); }),
            "adoptHandler: no handler given");
  EXPECT_THAT(connections.serviceNames(), IsEmpty());
}

TEST_F(ConnectionMgrTest, AdoptingAHandlerRegisteredElsewhereThrowsAndDestroysIt) {
  ConnectionMgr elsewhere;
  int destroyed = 0;
  auto stranger =
      std::make_unique<WatchedHandler>("dispatch.stranger", elsewhere, [&] { ++destroyed; });

  EXPECT_EQ(thrown<std::invalid_argument>([&] { connections.adoptHandler(std::move(stranger)); }),
            "adoptHandler: the handler for service 'dispatch.stranger' is not registered with "
            "this connection manager");

  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(connections.findHandler("dispatch.stranger"), nullptr);
  // Its destructor took it out of the manager it did register with.
  EXPECT_EQ(elsewhere.findHandler("dispatch.stranger"), nullptr);
}

TEST_F(ConnectionMgrTest, AdoptingANamesakeOfARegisteredHandlerThrowsAndKeepsTheRegisteredOne) {
  FakeHandler local("dispatch.alpha", connections, journal);
  ConnectionMgr elsewhere;
  int destroyed = 0;
  auto namesake =
      std::make_unique<WatchedHandler>("dispatch.alpha", elsewhere, [&] { ++destroyed; });

  EXPECT_EQ(thrown<std::invalid_argument>([&] { connections.adoptHandler(std::move(namesake)); }),
            "adoptHandler: the handler for service 'dispatch.alpha' is not registered with "
            "this connection manager");

  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(connections.findHandler("dispatch.alpha"), &local);
}

TEST_F(ConnectionMgrTest, AdoptedHandlersAreDestroyedWithTheManagerNewestFirst) {
  std::vector<std::string> destroyed;
  {
    ConnectionMgr owner;
    owner.adoptHandler(std::make_unique<WatchedHandler>(
        "dispatch.first", owner, [&] { destroyed.push_back("dispatch.first"); }));
    owner.adoptHandler(std::make_unique<WatchedHandler>(
        "dispatch.second", owner, [&] { destroyed.push_back("dispatch.second"); }));
    owner.adoptHandler(std::make_unique<WatchedHandler>(
        "dispatch.third", owner, [&] { destroyed.push_back("dispatch.third"); }));
    EXPECT_THAT(destroyed, IsEmpty());
  }
  EXPECT_THAT(destroyed, ElementsAre("dispatch.third", "dispatch.second", "dispatch.first"));
}

TEST_F(ConnectionMgrTest, AdoptedHandlersAreDestroyedBeforeTheSessionManager) {
  // Handlers may use their session tables until they are gone, so the session manager must
  // outlive them. The test keeps no reference of its own to the session manager.
  std::vector<std::string> seen;
  {
    ConnectionMgr owner;
    std::weak_ptr<HCSDispatchSessionMgr> sessionMgr = owner.getSessionMgr();
    owner.adoptHandler(std::make_unique<WatchedHandler>("dispatch.alpha", owner, [&, sessionMgr] {
      seen.push_back(sessionMgr.expired() ? "session manager gone" : "session manager alive");
    }));
  }
  EXPECT_THAT(seen, ElementsAre("session manager alive"));
}

TEST_F(ConnectionMgrTest, HandlerNotAdoptedStaysWithItsCreator) {
  int destroyed = 0;
  {
    WatchedHandler kept("dispatch.kept", connections, [&] { ++destroyed; });
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(connections.findHandler("dispatch.kept"), nullptr);
}

// ---- Session events -----------------------------------------------------------------------------

TEST_F(ConnectionMgrTest, CreateSessionWithoutUuidGetsAFreshOne) {
  auto table = addTable("T");

  Session const created = connections.createSession(session("", "first"));

  EXPECT_EQ(created.uuid().size(), 36u);
  EXPECT_TRUE(isFreshUuid(created.uuid())) << created.uuid();
  EXPECT_EQ(created.name(), "first");
  EXPECT_THAT(journal.entries(), ElementsAre("T create " + created.uuid() + " 'first'"));
}

TEST_F(ConnectionMgrTest, CreateSessionKeepsAGivenUuid) {
  auto table = addTable("T");

  Session const created = connections.createSession(session("my-own-uuid", "mine"));

  EXPECT_EQ(created.uuid(), "my-own-uuid");
  EXPECT_EQ(created.name(), "mine");
  EXPECT_THAT(journal.entries(), ElementsAre("T create my-own-uuid 'mine'"));
}

TEST_F(ConnectionMgrTest, FreshUuidsDiffer) {
  auto table = addTable("T");
  std::set<std::string> uuids;
  for (int i = 0; i < 50; ++i) uuids.insert(connections.createSession(session("")).uuid());
  EXPECT_EQ(uuids.size(), 50u);
}

TEST_F(ConnectionMgrTest, FreshUuidHasTheVersion4Form) {
  std::string const uuid = ConnectionMgr::freshUuid();
  EXPECT_EQ(uuid.size(), 36u);
  EXPECT_TRUE(isFreshUuid(uuid)) << uuid;
  EXPECT_NE(ConnectionMgr::freshUuid(), uuid);
}

TEST_F(ConnectionMgrTest, CreateSessionWithoutTablesStillAnswers) {
  Session const created = connections.createSession(session("", "alone"));
  EXPECT_TRUE(isFreshUuid(created.uuid())) << created.uuid();
  EXPECT_EQ(created.name(), "alone");
}

TEST_F(ConnectionMgrTest, CreateSessionPassesTheTablesExceptionThrough) {
  auto table = addTable("T");
  table->refuseCreate = true;
  EXPECT_EQ(thrown<TableRefusal>([&] { connections.createSession(session("u-1")); }),
            "T refuses create");
}

TEST_F(ConnectionMgrTest, ForkSessionWithoutTargetUuidGetsAFreshOne) {
  auto table = addTable("T");

  Session const target = connections.forkSession("u-source", session("", "copy"));

  EXPECT_TRUE(isFreshUuid(target.uuid())) << target.uuid();
  EXPECT_NE(target.uuid(), "u-source");
  EXPECT_EQ(target.name(), "copy");
  EXPECT_THAT(journal.entries(), ElementsAre("T fork u-source -> " + target.uuid()));
}

TEST_F(ConnectionMgrTest, ForkSessionKeepsAGivenTargetUuid) {
  auto table = addTable("T");

  Session const target = connections.forkSession("u-source", session("u-target", "copy"));

  EXPECT_EQ(target.uuid(), "u-target");
  EXPECT_EQ(target.name(), "copy");
  EXPECT_THAT(journal.entries(), ElementsAre("T fork u-source -> u-target"));
}

TEST_F(ConnectionMgrTest, ForkSessionPassesTheTablesExceptionThrough) {
  auto table = addTable("T");
  table->refuseFork = true;
  EXPECT_EQ(thrown<TableRefusal>([&] { connections.forkSession("u-source", session("u-target")); }),
            "T refuses fork");
}

TEST_F(ConnectionMgrTest, RemoveSessionPassesSessionAndFlag) {
  auto table = addTable("T");
  connections.removeSession(session("u-1"), true);
  connections.removeSession(session("u-2"), false);
  connections.removeSession(session("u-3"));  // the flag's default
  EXPECT_THAT(journal.entries(),
              ElementsAre("T remove u-1 true", "T remove u-2 false", "T remove u-3 false"));
}

TEST_F(ConnectionMgrTest, RemoveSessionPassesTheTablesExceptionThrough) {
  auto table = addTable("T");
  table->refuseRemove = true;
  EXPECT_EQ(thrown<TableRefusal>([&] { connections.removeSession(session("u-1")); }),
            "T refuses remove");
}

TEST_F(ConnectionMgrTest, SessionEventsReachEveryTable) {
  auto first = addTable("A");
  auto second = addTable("B");

  connections.createSession(session("u-1", "one"));
  connections.forkSession("u-1", session("u-2"));
  connections.removeSession(session("u-1"), true);

  EXPECT_THAT(journal.entries(), ElementsAre("A create u-1 'one'", "B create u-1 'one'",  //
                                             "A fork u-1 -> u-2", "B fork u-1 -> u-2",    //
                                             "A remove u-1 true", "B remove u-1 true"));
}

TEST_F(ConnectionMgrTest, FreshUuidIsTheSameInEveryTable) {
  auto first = addTable("A");
  auto second = addTable("B");
  Session const created = connections.createSession(session(""));
  EXPECT_THAT(journal.entries(), ElementsAre("A create " + created.uuid() + " ''",
                                             "B create " + created.uuid() + " ''"));
}

// ---- The session guarantee ----------------------------------------------------------------------

TEST_F(ConnectionMgrTest, CreateSessionWaitsForARunningRequest) {
  BlockingHandler slow("dispatch.slow", connections, journal);
  auto table = addTable("T");
  std::future<void> requestEntered = slow.entered();

  auto request = std::async(std::launch::async, [&] {
    Response response;
    connections.dispatch(requestFor("dispatch.slow"), response);
    return response;
  });
  ASSERT_EQ(requestEntered.wait_for(kMustHappen), std::future_status::ready);

  std::promise<void> creatorStarted;
  auto creation = std::async(std::launch::async, [&] {
    creatorStarted.set_value();
    return connections.createSession(session("u-waiting"));
  });
  creatorStarted.get_future().wait();

  // The request still runs, so the session must not have been created yet.
  EXPECT_EQ(creation.wait_for(kMustNotHappen), std::future_status::timeout);
  EXPECT_THAT(journal.entries(), IsEmpty());

  slow.release();
  ASSERT_EQ(creation.wait_for(kMustHappen), std::future_status::ready);
  EXPECT_EQ(request.get().status().code(), 200);
  EXPECT_EQ(creation.get().uuid(), "u-waiting");
  EXPECT_THAT(journal.entries(), ElementsAre("request ends", "T create u-waiting ''"));
}

TEST_F(ConnectionMgrTest, RemoveSessionWaitsForARunningRequest) {
  BlockingHandler slow("dispatch.slow", connections, journal);
  auto table = addTable("T");
  std::future<void> requestEntered = slow.entered();

  auto request = std::async(std::launch::async, [&] {
    Response response;
    connections.dispatch(requestFor("dispatch.slow"), response);
  });
  ASSERT_EQ(requestEntered.wait_for(kMustHappen), std::future_status::ready);

  std::promise<void> removerStarted;
  auto removal = std::async(std::launch::async, [&] {
    removerStarted.set_value();
    connections.removeSession(session("u-gone"), false);
  });
  removerStarted.get_future().wait();

  EXPECT_EQ(removal.wait_for(kMustNotHappen), std::future_status::timeout);

  slow.release();
  ASSERT_EQ(removal.wait_for(kMustHappen), std::future_status::ready);
  request.get();
  removal.get();
  EXPECT_THAT(journal.entries(), ElementsAre("request ends", "T remove u-gone false"));
}

TEST_F(ConnectionMgrTest, RequestWaitsForARunningSessionEvent) {
  FakeHandler quick("dispatch.quick", connections, journal);
  auto blocking = std::make_shared<BlockingTable>(journal);
  connections.getSessionMgr()->addHandler(blocking);
  std::future<void> createEntered = blocking->entered();

  auto creation =
      std::async(std::launch::async, [&] { return connections.createSession(session("u-new")); });
  ASSERT_EQ(createEntered.wait_for(kMustHappen), std::future_status::ready);

  std::promise<void> requesterStarted;
  auto request = std::async(std::launch::async, [&] {
    requesterStarted.set_value();
    Response response;
    connections.dispatch(requestFor("dispatch.quick", "u-new"), response);
    return response;
  });
  requesterStarted.get_future().wait();

  EXPECT_EQ(request.wait_for(kMustNotHappen), std::future_status::timeout);
  EXPECT_THAT(journal.entries(), IsEmpty());

  blocking->release();
  ASSERT_EQ(request.wait_for(kMustHappen), std::future_status::ready);
  creation.get();
  EXPECT_EQ(request.get().status().message(), "dispatch.quick served u-new");
  EXPECT_THAT(journal.entries(), ElementsAre("create u-new ends", "dispatch.quick served u-new"));
}

TEST_F(ConnectionMgrTest, RequestsRunSideBySide) {
  // A request that waits must not hold back another one: requests share the lock.
  BlockingHandler slow("dispatch.slow", connections, journal);
  FakeHandler quick("dispatch.quick", connections, journal);
  std::future<void> slowEntered = slow.entered();

  auto slowRequest = std::async(std::launch::async, [&] {
    Response response;
    connections.dispatch(requestFor("dispatch.slow"), response);
  });
  ASSERT_EQ(slowEntered.wait_for(kMustHappen), std::future_status::ready);

  auto quickRequest = std::async(std::launch::async, [&] {
    Response response;
    connections.dispatch(requestFor("dispatch.quick", "u-1"), response);
    return response;
  });
  EXPECT_EQ(quickRequest.wait_for(kMustHappen), std::future_status::ready);

  slow.release();
  slowRequest.get();
  EXPECT_EQ(quickRequest.get().status().message(), "dispatch.quick served u-1");
  EXPECT_THAT(journal.entries(), ElementsAre("dispatch.quick served u-1", "request ends"));
}

}  // namespace
