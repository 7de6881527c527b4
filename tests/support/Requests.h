// Requests and response checks shared by the service tests.
#ifndef TESTS_SUPPORT_REQUESTS_H_
#define TESTS_SUPPORT_REQUESTS_H_

#include <string>

#include <google/protobuf/message.h>
#include <gtest/gtest.h>

#include "proto/dispatch.pb.h"

namespace qvtest {

// A request of the diagram service for `sessionUuid` carrying `payload`.
inline dispatch::Request requestFor(std::string const& sessionUuid,
                                    google::protobuf::Message const& payload) {
  dispatch::Request request;
  request.set_service("dispatch.system_diagram_server");
  request.set_session_uuid(sessionUuid);
  request.mutable_payload()->PackFrom(payload);
  return request;
}

// Passes when `response` carries status `code` with its standard text.
inline ::testing::AssertionResult HasStatus(dispatch::Response const& response, int code) {
  if (!response.has_status()) return ::testing::AssertionFailure() << "the response has no status";
  if (response.status().code() != code) {
    return ::testing::AssertionFailure() << "status " << response.status().code() << " ("
                                         << response.status().message() << "), expected " << code;
  }
  return ::testing::AssertionSuccess();
}

}  // namespace qvtest

#define EXPECT_STATUS(response, code) EXPECT_TRUE(::qvtest::HasStatus((response), (code)))
#define ASSERT_STATUS(response, code) ASSERT_TRUE(::qvtest::HasStatus((response), (code)))

#endif  // TESTS_SUPPORT_REQUESTS_H_
