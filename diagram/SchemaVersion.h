// The version found in a JSON input beside the version this library reads.
#ifndef DIAGRAM_SCHEMAVERSION_H_
#define DIAGRAM_SCHEMAVERSION_H_

#include <string>

namespace IPA {

// Three strings found in a file and the three that the library supports. Versions are text and
// are compared as text, never as numbers.
class SchemaVersion {
 public:
  SchemaVersion(std::string major, std::string minor, std::string patch, std::string supportedMajor,
                std::string supportedMinor, std::string supportedPatch);
  virtual ~SchemaVersion() = default;

  // Whether the version that `other` found fits what this object supports: the found major
  // version is not smaller than the supported one in byte order (so "2" and "10" pass against
  // "1", "01", "0" and "" do not), and minor and patch are exactly equal to the supported ones
  // (so 1.1.0 and 1.0.1 are refused although 2.0.0 is accepted; minor versions are not ordered).
  virtual bool isSupported(SchemaVersion const& other) const;

  // "<major>.<minor>.<patch>" of the supported version.
  virtual std::string supportedVersion() const;

  std::string getMajor() const { return major; }
  std::string getMinor() const { return minor; }
  std::string getPatch() const { return patch; }

 private:
  std::string major;
  std::string minor;
  std::string patch;
  std::string supportedMajor;
  std::string supportedMinor;
  std::string supportedPatch;
};

}  // namespace IPA

#endif  // DIAGRAM_SCHEMAVERSION_H_
