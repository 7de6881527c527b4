// Protobuf messages in tests: written as text, compared exactly.
#ifndef TESTS_SUPPORT_MESSAGES_H_
#define TESTS_SUPPORT_MESSAGES_H_

#include <string>

#include <google/protobuf/message.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>
#include <gtest/gtest.h>

namespace qvtest {

// A message from its text form; a text that does not parse fails the test.
template <class Message>
Message parse(std::string const& text) {
  Message message;
  EXPECT_TRUE(google::protobuf::TextFormat::ParseFromString(text, &message)) << text;
  return message;
}

// Exact comparison: a message that is present but empty differs from one that is absent, which
// is what the checks on created sections rely on.
inline ::testing::AssertionResult sameMessage(google::protobuf::Message const& expected,
                                              google::protobuf::Message const& actual) {
  std::string differences;
  google::protobuf::util::MessageDifferencer differencer;
  differencer.ReportDifferencesToString(&differences);
  if (differencer.Compare(expected, actual)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "differences (expected, then actual):\n"
                                       << differences << "actual:\n"
                                       << actual.DebugString();
}

}  // namespace qvtest

#endif  // TESTS_SUPPORT_MESSAGES_H_
