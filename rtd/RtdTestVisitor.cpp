#include "rtd/RtdTestVisitor.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "rtd/RtdConnection.h"
#include "rtd/RtdIpData.h"
#include "rtd/RtdMemData.h"
#include "rtd/RtdTree.h"

namespace IPA {

namespace {

// A value is written as it stands, without escaping: the dump shows exactly the text the reader
// kept, even where that leaves it invalid JSON.
void writeField(std::ostream& out, std::string const& key, std::string const& value, bool last) {
  out << '"' << key << "\": \"" << value << '"' << (last ? "" : ",") << '\n';
}

void writeEntry(std::ostream& out, RtdMemData const& m) {
  writeField(out, RtdMemData::typeId, m.type, false);
  writeField(out, RtdMemData::usedId, m.used, false);
  writeField(out, RtdMemData::sizeKBId, m.sizeKB, false);
  writeField(out, RtdMemData::baseAddressId, m.baseAddress, false);
  writeField(out, RtdMemData::tagId, m.tag, false);
  writeField(out, RtdMemData::spTagId, m.spTag, true);
}

// The clock list is left out: the dump is for the flat values of the entry.
void writeEntry(std::ostream& out, RtdIpData const& ip) {
  writeField(out, RtdIpData::typeId, ip.type, false);
  writeField(out, RtdIpData::propertiesId, ip.properties, false);
  writeField(out, RtdIpData::intEnableId, ip.intEnable, false);
  writeField(out, RtdIpData::interruptIdId, ip.interruptId, false);
  writeField(out, RtdIpData::ipControlId, ip.ipControl, false);
  writeField(out, RtdIpData::baseAddressId, ip.baseAddress, false);
  writeField(out, RtdIpData::nameId, ip.name, true);
}

void writeEntry(std::ostream& out, RtdConnection const& c) {
  writeField(out, RtdConnection::argIndexId, c.argIndex, false);
  writeField(out, RtdConnection::argNameId, c.argName, false);
  writeField(out, RtdConnection::modeId, c.mode, false);
  writeField(out, RtdConnection::ipLayoutIndexId, c.ipLayoutIndex, false);
  writeField(out, RtdConnection::memDataIndexId, c.memDataIndex, true);
}

// One section: its key, the number of entries, and the list as an object in which every entry
// has the same key, as the file's list would read if its entries were named. The last section
// of the file closes without a comma.
template <class Entry>
void writeSection(std::ostream& out, char const* sectionKey, char const* listKey,
                  char const* entryKey, std::vector<Entry> const& entries, bool lastSection) {
  out << '"' << sectionKey << "\": {\n";
  writeField(out, "m_count", std::to_string(entries.size()), false);
  out << '"' << listKey << "\": {\n";
  for (std::size_t i = 0; i < entries.size(); ++i) {
    out << '"' << entryKey << "\": {\n";
    writeEntry(out, entries[i]);
    out << (i + 1 == entries.size() ? "}\n" : "},\n");
  }
  out << "}\n";
  out << (lastSection ? "}\n" : "},\n");
}

void refuseMissing(char const* part) {
  throw std::invalid_argument(std::string("RtdTestVisitor needs every part of the tree; ") + part +
                              " is missing");
}

}  // namespace

RtdTestVisitor::RtdTestVisitor(std::ostream& stream) : out(stream) {}

void RtdTestVisitor::visit(RtdTree& tree) {
  // All checks come first, so that a refused tree leaves nothing half written in the stream.
  if (tree.schemaVersion == nullptr) refuseMissing("\"schema_version\"");
  if (tree.memTopology == nullptr) refuseMissing("\"mem_topology\"");
  if (tree.memTopology->getMemDataCollection() == nullptr) refuseMissing("\"m_mem_data\"");
  if (tree.ipLayout == nullptr) refuseMissing("\"ip_layout\"");
  if (tree.ipLayout->getIpDataCollection() == nullptr) refuseMissing("\"m_ip_data\"");
  if (tree.connectivity == nullptr) refuseMissing("\"connectivity\"");
  if (tree.connectivity->getConnectionCollection() == nullptr) refuseMissing("\"m_connection\"");

  out << "{\n";
  // The space before the colon on this one line is part of the format the dump is compared
  // against; the section lines below have none.
  out << "\"schema_version\" : {\n";
  writeField(out, "major", tree.schemaVersion->getMajor(), false);
  writeField(out, "minor", tree.schemaVersion->getMinor(), false);
  writeField(out, "patch", tree.schemaVersion->getPatch(), true);
  out << "},\n";
  writeSection(out, "mem_topology", "m_mem_data", "mem_data",
               tree.memTopology->getMemDataCollection()->getMemData(), false);
  writeSection(out, "ip_layout", "m_ip_data", "ip_data",
               tree.ipLayout->getIpDataCollection()->getIpData(), false);
  writeSection(out, "connectivity", "m_connection", "connection",
               tree.connectivity->getConnectionCollection()->getConnections(), true);
  out << "}\n";
}

}  // namespace IPA
