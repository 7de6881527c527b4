#include "tools/qvdiag/CompileServerService.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/dispatch/RequestHandler.h"
#include "proto/system_diagram_server.pb.h"

namespace qvdiag {
namespace {

namespace wire = dispatch::system_diagram_server;

// A service whose requests wait a while for a second request to join them inside the
// handler, and which remembers how many were ever inside at once.
class MeetingHandler : public dispatch::server::RequestHandler {
 public:
  explicit MeetingHandler(dispatch::server::ConnectionMgr& connections)
      : RequestHandler("meeting", connections) {}

  void handle_request(dispatch::Request const&, dispatch::Response& response) override {
    std::unique_lock<std::mutex> lock(mutex_);
    ++inside_;
    mostInside_ = std::max(mostInside_, inside_);
    joined_.notify_all();
    joined_.wait_for(lock, std::chrono::milliseconds(300), [this] { return mostInside_ >= 2; });
    --inside_;
    lock.unlock();
    stockResponse(dispatch::StatusResponse::OK, response);
  }

  int mostInside() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return mostInside_;
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable joined_;
  int inside_ = 0;
  int mostInside_ = 0;
};

class CompileServerServiceTest : public ::testing::Test {
 protected:
  CompileServerServiceTest()
      : meeting(static_cast<MeetingHandler&>(
            connections.adoptHandler(std::make_unique<MeetingHandler>(connections)))) {}

  template <class Payload>
  static dispatch::Request requestOf(Payload const& payload) {
    dispatch::Request request;
    request.set_service("meeting");
    request.mutable_payload()->PackFrom(payload);
    return request;
  }

  // Sends `request` from two threads at once; both answers must be OK.
  void sendTwiceAtOnce(dispatch::Request const& request) {
    dispatch::Response first;
    dispatch::Response second;
    std::thread other([&] { EXPECT_TRUE(service.Dispatch(nullptr, &request, &second).ok()); });
    EXPECT_TRUE(service.Dispatch(nullptr, &request, &first).ok());
    other.join();
    EXPECT_EQ(first.status().code(), 200);
    EXPECT_EQ(second.status().code(), 200);
  }

  dispatch::server::ConnectionMgr connections;
  MeetingHandler& meeting;
  CompileServerService service{connections};
};

TEST_F(CompileServerServiceTest, ImportsRunOneAtATime) {
  wire::MakeInitialSystemDiagram import;
  import.set_rtdfile("a.rtd");
  sendTwiceAtOnce(requestOf(import));
  EXPECT_EQ(meeting.mostInside(), 1);
}

TEST_F(CompileServerServiceTest, OtherRequestsRunSideBySide) {
  wire::WriteSystemDiagram write;
  write.set_path("diagram.json");
  sendTwiceAtOnce(requestOf(write));
  EXPECT_EQ(meeting.mostInside(), 2);
}

}  // namespace
}  // namespace qvdiag
