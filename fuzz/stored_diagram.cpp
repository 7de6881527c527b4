// Fuzz target: the stored system diagram, as the ReadSystemDiagram request reads it.
//
// The bytes are the file: SystemDiagram::readSystemDiagram reads it from a path, as the request
// does. A diagram that was read is then used the way a session goes on with it: written back
// (WriteSystemDiagram), copied as a fork copies it, and given its flow report (WriteFlowReport).
#include <cstddef>
#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>

#include "diagram/SystemDiagram.h"
#include "fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const path = qvfuzz::writeScratchFile(data, size);
  IPA::SystemDiagram session;
  try {
    session.readSystemDiagram(path);
  } catch (std::runtime_error const&) {
    // "Deserializing failed with error: ...": the documented refusal.
    return 0;
  }
  session.serializeCurrentSystemDiagram(path);
  IPA::SystemDiagram const fork(session);
  (void)fork;
  try {
    session.writeFlowReport("/dev/null");
  } catch (std::exception const&) {
    // The report documents what its sections throw for texts that are no numbers (stoi, stof)
    // and short columns (out_of_range); the request answers 500 for them.
  }
  return 0;
}
