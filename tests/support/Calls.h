// Running a call in a test and telling how it ended.
#ifndef TESTS_SUPPORT_CALLS_H_
#define TESTS_SUPPORT_CALLS_H_

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace qvtest {

// The text of the std::runtime_error that `operation` throws, or "<no exception>".
inline std::string runtimeErrorText(std::function<void()> const& operation) {
  try {
    operation();
  } catch (std::runtime_error const& error) {
    return error.what();
  }
  return "<no exception>";
}

// Whether `call` returns within five seconds on a thread of its own. A call that does not is
// waiting for a lock that nobody will release; its thread is then left behind, and whatever it
// uses must be kept alive by the shared pointers it captured.
inline bool returnsInTime(std::function<void()> call) {
  auto finished = std::make_shared<std::promise<void>>();
  std::future<void> done = finished->get_future();
  std::thread([call, finished] {
    try {
      call();
    } catch (...) {
    }
    finished->set_value();
  }).detach();
  return done.wait_for(std::chrono::seconds(5)) == std::future_status::ready;
}

}  // namespace qvtest

#endif  // TESTS_SUPPORT_CALLS_H_
