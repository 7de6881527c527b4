#include "service/ScopedDebugLog.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/LoggerCapture.h"

namespace {

using qvtest::LoggerCapture;

TEST(ScopedDebugLogTest, LabelThatSaysEnteringReadsTheWordTwice) {
  LoggerCapture log(dispatch::server::kLogDebug);
  { IPA::SystemDiagramHandler::ScopedDebugLog scoped("Entering handleUpsertKernelRequest"); }
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering Entering handleUpsertKernelRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving Entering handleUpsertKernelRequest\n");
}

TEST(ScopedDebugLogTest, LeavingLineIsWrittenWhenAnExceptionPasses) {
  LoggerCapture log(dispatch::server::kLogDebug);
  try {
    IPA::SystemDiagramHandler::ScopedDebugLog scoped("handleUpsertPlatform");
    throw std::runtime_error("boom");
  } catch (std::runtime_error const&) {
  }
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleUpsertPlatform\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleUpsertPlatform\n");
}

TEST(ScopedDebugLogTest, LinesGoToTheLoggerOfLevelFour) {
  // Below level 4 the debug logger keeps quiet.
  LoggerCapture log(dispatch::server::kLogEvent);
  { IPA::SystemDiagramHandler::ScopedDebugLog scoped("handleUpsertQsaClock"); }
  EXPECT_EQ(log.text(), "");
}

TEST(ScopedDebugLogTest, EchoShowsTheLinesOnStandardOutput) {
  LoggerCapture log(dispatch::server::kLogError);
  dispatch::server::Logger::setEcho(true);
  testing::internal::CaptureStdout();
  { IPA::SystemDiagramHandler::ScopedDebugLog scoped("handleUpsertQrxBinRequest"); }
  std::string const echoed = testing::internal::GetCapturedStdout();
  dispatch::server::Logger::setEcho(false);
  EXPECT_EQ(echoed,
            "SYSTEM_DIAGRAM_HANDLER: Entering handleUpsertQrxBinRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleUpsertQrxBinRequest\n");
  EXPECT_EQ(log.text(), "");
}

}  // namespace
