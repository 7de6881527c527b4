// Standard error as the repository tests see it: what a call wrote there, with libxml2's own
// parser and XPath errors silenced so that only our Log lines remain.
#ifndef TESTS_SUPPORT_STDERR_H_
#define TESTS_SUPPORT_STDERR_H_

#include <libxml/xmlerror.h>

#include <string>

#include <gtest/gtest.h>

namespace qvtest {

// What `call` wrote to standard error.
template <class Call>
std::string stderrOf(Call call) {
  ::testing::internal::CaptureStderr();
  call();
  return ::testing::internal::GetCapturedStderr();
}

// libxml2's own error output (for a syntax error or a file that is not XML) is not ours to
// test; while one of these lives, it goes nowhere.
class SilentLibxml {
 public:
  SilentLibxml() { xmlSetGenericErrorFunc(nullptr, discard); }
  ~SilentLibxml() { xmlSetGenericErrorFunc(nullptr, nullptr); }
  SilentLibxml(SilentLibxml const&) = delete;
  SilentLibxml& operator=(SilentLibxml const&) = delete;

 private:
  static void discard(void*, char const*, ...) {}
};

}  // namespace qvtest

#endif  // TESTS_SUPPORT_STDERR_H_
