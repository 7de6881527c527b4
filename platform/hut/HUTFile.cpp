#include "platform/hut/HUTFile.h"

#include <boost/filesystem/operations.hpp>

bool HUTFile::exists() const {
  if (path_.empty()) return false;
  boost::system::error_code error;
  return boost::filesystem::exists(path_, error) && !error;
}

std::string HUTFile::getDirSeparator() { return "/"; }
