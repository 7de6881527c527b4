#include "service/ScopedDebugLog.h"

#include "platform/dispatch/Logger.h"

namespace IPA {

using dispatch::server::Logger;

SystemDiagramHandler::ScopedDebugLog::ScopedDebugLog(std::string const& text) : label(text) {
  Logger::getLogger(dispatch::server::kLogDebug)
      << "SYSTEM_DIAGRAM_HANDLER: Entering " << label << std::endl;
}

SystemDiagramHandler::ScopedDebugLog::~ScopedDebugLog() {
  Logger::getLogger(dispatch::server::kLogDebug)
      << "SYSTEM_DIAGRAM_HANDLER: Leaving " << label << std::endl;
}

}  // namespace IPA
