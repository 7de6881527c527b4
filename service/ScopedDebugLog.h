// The entry and exit lines of a request handler.
#ifndef SERVICE_SCOPEDDEBUGLOG_H_
#define SERVICE_SCOPEDDEBUGLOG_H_

#include <string>

#include "service/SystemDiagramHandler.h"

namespace IPA {

// On the server's logger of level 4: "SYSTEM_DIAGRAM_HANDLER: Entering <label>" when made,
// "SYSTEM_DIAGRAM_HANDLER: Leaving <label>" when destroyed, also when an exception leaves the
// handler. Some labels begin with "Entering " themselves, and their lines read the word twice.
class SystemDiagramHandler::ScopedDebugLog {
 public:
  explicit ScopedDebugLog(std::string const& label);
  ~ScopedDebugLog();

  ScopedDebugLog(ScopedDebugLog const&) = delete;
  ScopedDebugLog& operator=(ScopedDebugLog const&) = delete;

 private:
  std::string label;
};

}  // namespace IPA

#endif  // SERVICE_SCOPEDDEBUGLOG_H_
