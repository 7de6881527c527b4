// The reader of a kernel's high-level synthesis report, "<kernel>.design.xml".
#ifndef PLATFORM_HCO_HCODESIGNXMLREADER_H_
#define PLATFORM_HCO_HCODESIGNXMLREADER_H_

#include <string>
#include <vector>

#include "platform/designxml/AreaEstimates.h"
#include "platform/designxml/Module.h"
#include "platform/designxml/ModuleInformation.h"
#include "platform/designxml/Profile.h"
#include "platform/designxml/Resources.h"

// Reads one report (format: "High-level synthesis reports" in docs/formats.md). Make it on a
// path, call parse() once, then walk down from getProfile(): module groups, a module of a group,
// its area estimates, their resource records. Each get... operation appends to `out` and leaves
// what was in it.
class HCODesignXMLReader {
 public:
  explicit HCODesignXMLReader(std::string path);

  // Reads the file. Throws std::runtime_error naming the file, and the line where there is one,
  // for a file that cannot be read, is not well-formed XML, has another root than <profile>, an
  // element out of place, or a count that is not an unsigned decimal number. On failure the
  // profile stays empty.
  void parse();

  // The report read by parse(); empty before it.
  DesignXML::Profile const& getProfile() const { return profile; }

  void getModuleInformation(DesignXML::Profile const& from,
                            std::vector<DesignXML::ModuleInformation>& out) const;
  void getAreaEstimates(DesignXML::Module const& from,
                        std::vector<DesignXML::AreaEstimates>& out) const;
  void getResources(DesignXML::AreaEstimates const& from,
                    std::vector<DesignXML::Resources>& out) const;

 private:
  std::string path;
  DesignXML::Profile profile;
};

#endif  // PLATFORM_HCO_HCODESIGNXMLREADER_H_
