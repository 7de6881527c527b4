// What the host tells about itself: product, holder, and the time of writing.
#ifndef PLATFORM_HUT_HUTENV_H_
#define PLATFORM_HUT_HUTENV_H_

#include <string>

// Static facts of the running product, for the headings of reports.
class HUTEnv {
 public:
  // "qv_system_diagram <version>", e.g. "qv_system_diagram 0.1.0".
  static std::string getFullProductStr();
  // The holder's text, e.g. "Copyright 2026 The qv_system_diagram authors. All rights reserved."
  static char const* getCopyRight();
  // Fills `stamp` with the local time now, as "Sat Nov 21 22:27:47 2026", or with the fixed
  // text set by setFixedTimeStamp.
  static void getTimeStamp(std::string& stamp);

  // Makes getTimeStamp answer `stamp` from now on, so that reports are reproducible.
  static void setFixedTimeStamp(std::string const& stamp);
  // Back to the clock.
  static void clearFixedTimeStamp();
};

#endif  // PLATFORM_HUT_HUTENV_H_
